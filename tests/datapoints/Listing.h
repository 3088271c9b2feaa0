#pragma once

#include "Datapoints.h"

// What was read, as the expected files below tests/data/datapoints have it: a line about the file, one for each
// datapoint
// ("address|name|groups|type") and one for each problem ("! line: reason").
QByteArray Listing(const TImportResult& result);

// The same without encoding and title, to compare one content in several forms.
QByteArray DatapointListing(const TImportResult& result);

// Reads content that a test writes down.
TImportResult ReadText(TDatapointKind kind, const QString& text);

// The reasons alone.
QStringList Reasons(const TImportResult& result);
