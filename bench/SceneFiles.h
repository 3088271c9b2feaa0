#pragma once

#include <QByteArray>
#include <QString>

// Scene configurations of any size for the benchmarks.

// A file of datapoints with addresses of three levels and a name with an umlaut each.
QByteArray DatapointFile(const char* root, int count);

// Fills `directory` with `datapoints` triggers and as many actions, and `scenes` scenes of ten steps each, bound to the
// first 1,000 of them in turn. Returns the scenes file.
QString MakeSceneDirectory(const QString& directory, int datapoints, int scenes);
