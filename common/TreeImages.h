#pragma once

#include <QIcon>
#include <QList>

// The pictures of tree nodes, drawn rather than loaded, so that they are sharp at every scale.
enum TTreeImage : quint8
{
    tiDocument,
    tiScene,
    tiFolder,
    tiAction,
    tiTrigger,
    tiDatapoint,
    tiClock,
    tiMenu,
    tiMainItem,
    tiSubItem,
};

QIcon TreeImage(TTreeImage image);
