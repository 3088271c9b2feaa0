#pragma once

#include "DatapointKey.h"
#include "DatapointStore.h"
#include "TestSupport.h"

#include <QMap>
#include <gtest/gtest.h>

// Opens a browser on the project's directory of datapoints.
inline constexpr auto BrowserCommand = "datapoints://%PRJPATH%/_config/data/datapoints";

// The project's directory of datapoints, and a store of one kind on it.
class TStoreFixture : public ::testing::Test
{
protected:
    explicit TStoreFixture(TDatapointKind kind = dkEib) : m_store(kind) { m_store.Load(Directory()); }

    QString Directory() const { return m_project.Path(QStringLiteral("_config/data/datapoints")); }
    QString File(const QString& name) const { return Directory() + u'/' + m_store.KindName() + u'/' + name; }
    QString DecisionsFile() const { return Directory() + u'/' + m_store.KindName() + QStringLiteral(".json"); }

    TDatapointImport Requested(const QString& name, const QByteArray& content, const QString& replaced = {},
                               const QString& encoding = {}) const
    {
        TImportOptions options;
        options.Encoding = encoding;
        return {.FileName = name,
                .Content = content,
                .Encoding = encoding,
                .Replaced = replaced,
                .Result = ReadDatapoints(m_store.Kind(), content, options)};
    }

    void Import(const QString& name, const QByteArray& content, const QString& replaced = {})
    {
        m_store.Import(Requested(name, content, replaced));
    }

    QStringList Texts() const
    {
        QStringList texts;
        for (const TFileProblem& problem : m_store.Problems())
            texts.append(problem.Text());
        return texts;
    }

    TTemporaryProject m_project;
    TDatapointStore m_store;
};

inline QStringList Addresses(const QList<TDatapoint>& datapoints)
{
    QStringList addresses;
    for (const TDatapoint& datapoint : datapoints)
        addresses.append(DatapointIdentifier(datapoint));
    return addresses;
}

inline QStringList Names(const QList<TDatapoint>& datapoints)
{
    QStringList names;
    for (const TDatapoint& datapoint : datapoints)
        names.append(datapoint.Name);
    return names;
}

// "1/1/1\tName\n", as an ESF file has it.
inline QByteArray EsfLine(const char* address, const char* name, const char* type = "Unbestimmt (1 Byte)")
{
    return QByteArray("A.B.") + address + '\t' + name + '\t' + type + "\tLow\t\r\n";
}
