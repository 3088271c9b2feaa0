#pragma once

#include <QString>
#include <QStringList>

// What the XML libraries may read while this lives: files below some directories, and a few files by name. Nothing from
// the network, no external entity or DTD, whatever a document asks for. Paths are compared as the disk has them: "..",
// percent escapes and symbolic links are resolved first. One at a time; the libraries know only one per process.
class TFileAccessPolicy
{
public:
    TFileAccessPolicy(const QStringList& directories, const QStringList& files);
    ~TFileAccessPolicy();
    TFileAccessPolicy(const TFileAccessPolicy&) = delete;
    TFileAccessPolicy& operator=(const TFileAccessPolicy&) = delete;

    // Null while there is none.
    static const TFileAccessPolicy* Current();

    // The next document that is loaded was asked for by us and is no entity of another one.
    static void ExpectDocument();

    // `location` as a library gives it: a path or a URL, escaped or not. False for what does not exist.
    bool MayRead(const char* location) const;

private:
    bool IsAllowed(const QString& path) const;

    QStringList m_directories; // canonical, with a separator at the end
    QStringList m_files;       // canonical
};
