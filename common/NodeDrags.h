#pragma once

#include "Vldragobjects.h"

#include <QList>
#include <QMimeData>

#include <memory>

// What the tree editors drag.

// A single node that only its own tree knows what to do with: nothing that another pane could use.
std::unique_ptr<QMimeData> MakeNodeDrag();

// Several nodes at once, as objects of this process.
std::unique_ptr<QMimeData> MakeObjectsDrag(const QList<TTreeNode*>& nodes);

// A datapoint as other panes take it.
struct TDatapointDrag
{
    QString Name;
    QString Alias;
    QString FixedValue;
    int EisNumber = 1;
    QString Source; // the source word: "eib", "modbus", "virtual"
    Qt::KeyboardModifiers ShiftState;
};

std::unique_ptr<QMimeData> MakeDatapointDrag(const TDatapointDrag& datapoint);
