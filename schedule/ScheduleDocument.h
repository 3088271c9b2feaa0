#pragma once

#include "ScheduleNodes.h"

#include <QString>
#include <QStringList>

#include <memory>

class QIODevice;
class TDocumentFiles;

// The weekly schedule's document: groups of datapoints with their switching entries. Reader and writer stand side by
// side, one function for each kind of element.

// Builds the tree, detached, from a file, appends the names of its groups to `groupNames` and marks the file in
// `files`. A file that is missing, does not parse or has another root gives the root alone, without a message.
std::unique_ptr<TScheduleNode> LoadScheduleTree(const QString& fileName, QStringList& groupNames,
                                                TDocumentFiles& files);

// Writes the document. A node is written as its level says; what stands deeper than the entries, and datapoints without
// a record, are left out. `root` may be null for an empty tree.
void WriteSchedule(QIODevice& device, const TScheduleNode* root);
