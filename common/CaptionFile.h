#pragma once

#include <QString>

#include <vector>

// One line of a text file of captions, the plain form of a tree.
struct TCaptionLine
{
    int Level;
    QString Caption;
};

// Reads a text file of captions, one a line, indented by one tab or blank for each level
// (UTF-8). The first line stands at level
// 0, all others below it, none more than one level deeper than the line before. Throws TUserError for a file that
// cannot be read, and ThrowMalformedCaptions for one that makes no tree.
std::vector<TCaptionLine> ReadCaptionFile(const QString& fileName);

// Throws the TUserError for a line, counted from 1, whose indentation does not make what an editor expects.
[[noreturn]] void ThrowMalformedCaptions(const QString& fileName, qsizetype line,
                                         const QString& expected = QStringLiteral("Baum"));

// Builds the tree below `top`, the node of the first line. `append(parent, caption)` adds a node and returns it.
template <class TNode, class TAppend>
void BuildFromCaptions(const std::vector<TCaptionLine>& lines, TNode* top, TAppend append)
{
    TNode* last = top;
    int level = 0;
    for (std::size_t i = 1; i < lines.size(); ++i) {
        for (; level >= lines[i].Level; --level)
            last = last->Parent();
        last = append(last, lines[i].Caption);
        level = lines[i].Level;
    }
}
