#include "FileAccessPolicy.h"

#include "Vlapputils.h"

#include <QFile>
#include <QFileInfo>

#include <libxml/parser.h>
#include <libxml/xmlIO.h>
#include <libxslt/documents.h>

#include <algorithm>
#include <utility>

namespace
{

const TFileAccessPolicy* policyInForce = nullptr;
xmlExternalEntityLoader previousLoader = nullptr;
xsltDocLoaderFunc previousDocumentLoader = nullptr;
bool documentExpected = false;

// Everything that the libraries open comes through here: documents that somebody asked for, and what these refer to as
// entities, which nobody gets.
xmlParserInputPtr LoadExpected(const char* location, const char* id, xmlParserCtxtPtr context)
{
    if (!std::exchange(documentExpected, false) || !location || !policyInForce || !policyInForce->MayRead(location))
        return nullptr;
    return previousLoader(location, id, context);
}

xmlDocPtr LoadForStylesheet(const xmlChar* location, xmlDictPtr names, int options, void* context, xsltLoadType type)
{
    TFileAccessPolicy::ExpectDocument();
    xmlDocPtr document = previousDocumentLoader(location, names, options, context, type);
    documentExpected = false;
    return document;
}

QString CanonicalPath(const QString& path)
{
    return QFileInfo(ToPlatformPath(path)).canonicalFilePath();
}

} // namespace

TFileAccessPolicy::TFileAccessPolicy(const QStringList& directories, const QStringList& files)
{
    for (const QString& directory : directories) {
        const QString path = directory.isEmpty() ? QString() : CanonicalPath(directory);
        if (!path.isEmpty())
            m_directories.append(path.endsWith(u'/') ? path : path + u'/');
    }
    for (const QString& file : files)
        m_files.append(CanonicalPath(file));
    m_files.removeAll(QString());
    policyInForce = this;
    previousLoader = xmlGetExternalEntityLoader();
    xmlSetExternalEntityLoader(LoadExpected);
    previousDocumentLoader = xsltDocDefaultLoader;
    xsltSetLoaderFunc(LoadForStylesheet);
}

TFileAccessPolicy::~TFileAccessPolicy()
{
    xsltSetLoaderFunc(previousDocumentLoader);
    xmlSetExternalEntityLoader(previousLoader);
    policyInForce = nullptr;
}

void TFileAccessPolicy::ExpectDocument()
{
    documentExpected = true;
}

const TFileAccessPolicy* TFileAccessPolicy::Current()
{
    return policyInForce;
}

bool TFileAccessPolicy::MayRead(const char* location) const
{
    QByteArray text(location);
    if (text.startsWith("file://localhost/"))
        text.remove(0, static_cast<int>(qstrlen("file://localhost")));
    else if (text.startsWith("file:///"))
        text.remove(0, static_cast<int>(qstrlen("file://")));
    else if (text.startsWith("file:/"))
        text.remove(0, static_cast<int>(qstrlen("file:")));
    // The libraries try a name as it stands and unescaped: neither may lead out.
    const QString plain = QFileInfo(QFile::decodeName(text)).canonicalFilePath();
    const QString unescaped = QFileInfo(QFile::decodeName(QByteArray::fromPercentEncoding(text))).canonicalFilePath();
    const bool exists = !plain.isEmpty() || !unescaped.isEmpty();
    return exists && (plain.isEmpty() || IsAllowed(plain)) && (unescaped.isEmpty() || IsAllowed(unescaped));
}

bool TFileAccessPolicy::IsAllowed(const QString& path) const
{
    return m_files.contains(path) || std::any_of(m_directories.begin(), m_directories.end(),
                                                 [&](const QString& directory) { return path.startsWith(directory); });
}
