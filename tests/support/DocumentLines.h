#pragma once

#include "Folders.h"

#include <QByteArray>
#include <QString>

#include <gtest/gtest.h>

#include <functional>
#include <string>

// What a component says about each line of a document that it has written, as the host asks for it: the names of the
// places, one a line; "-" for a line that leads nowhere.
template <class TFrame> std::string PlacesIn(TFrame& frame, const QString& path, const QByteArray& document,
                                             const std::function<std::string()>& selected)
{
    std::string places;
    for (int line = 1; line <= document.count('\n'); ++line) {
        const TDocumentPlace place = frame.DocumentPlace(path, line);
        frame.clearSelection();
        EXPECT_TRUE(!place || place()) << line;
        places += (line > 1 ? "|" : "") + (place ? selected() : "-");
    }
    return places;
}
