#pragma once

#include <QString>
#include <QStringList>

#include <cstddef>

// Renders a menu document to HTML through an XSLT stylesheet. The stylesheet is the project's and not trusted: it
// reads files below `ReadableRoots` and nothing else, writes nothing, never reaches the network, and is cut off when it
// recurses or loops without end or takes too much memory.

// Half of the machine's memory, and at least 2 GiB: a menu of 110,000 items takes one.
std::size_t DefaultMenuMemory();

// What one transformation reads and writes, in the platform's or the package's form.
struct TMenuTransformation
{
    QString StylePath;
    QString MenuPath;
    QString OutputPath;        // replaced as a whole; "stdout..." is the standard output
    QStringList ReadableRoots; // directories that the stylesheet may read besides itself
    // What the documents, the stylesheet and all it makes may take together, in bytes.
    std::size_t MemoryLimit = DefaultMenuMemory();
};

struct TTransformationOutcome
{
    int Saved = -1; // bytes are not counted: negative for a failure, else 0 or more
    QString Reason; // the first complaint of the parser or the stylesheet; empty without one
};

// Runs one. What fails leaves the former output as it was. An empty result writes nothing and is no failure. Throws
// TFileError when the output cannot be written.
TTransformationOutcome TransformMenu(const TMenuTransformation& transformation);

// Makes the directory of a menu with all parents and puts the product's template files there. Nothing happens when it
// exists. A template that cannot be copied is passed over. Throws TFileError when the directory cannot be made.
void PrepareMenuDirectory(const QString& directory);
