#pragma once

#include "MenuNodes.h"

#include <QString>

#include <memory>
#include <optional>
#include <vector>

class QIODevice;

// The navigation menu's document and the one of the sensitive links. Reader and writer stand side by side.

using TMenuNodes = std::vector<std::unique_ptr<TTreeNode>>;

// What the header of a menu says beside its items.
struct TMenuHeader
{
    QString StylePath = {}; // of the stylesheet that a browser would apply
    int Levels = 2;         // how many levels the menu shows
    QString Logo = {};
    QString HelpBase = {};
};

// A menu as it was read, detached.
struct TMenuContent
{
    TMenuNodes Items;            // the main items with their sub items
    TMenuNodes Strays;           // items that stand before any main item and belong to none
    std::optional<QString> Logo; // where the document has one
};

// Reads a menu. Nothing when the file is no well-formed menu document.
std::optional<TMenuContent> ReadMenu(const QString& path);

// Writes a menu: the children of `root` (may be null), numbered anew. What stands deeper than the sub items is written
// flat among them. Throws TFileError.
void WriteMenu(QIODevice& device, const TMenuNode* root, const TMenuHeader& header);

// Reads the sensitive links. Nothing when the file is no well-formed document of links.
std::optional<TMenuNodes> ReadLinks(const QString& path);

// Writes the direct children of `root` (may be null), numbered anew. Throws TFileError.
void WriteLinks(QIODevice& device, const TMenuNode* root);
