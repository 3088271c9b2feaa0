#pragma once

#include "Datapoints.h"

#include <QHash>

// Longer names are cut.
constexpr qsizetype LongestName = 1000;

// How much of an import the decoding of the file is taken for.
constexpr double DecodingShare = 0.2;

// A piece of a file's text for a message: between quotation marks, on one line, and cut where it is long.
QString QuotedPiece(QStringView text);

// What the readers of all formats hand their finds to. It keeps the rules that hold for every format: names and
// addresses are one line, names of bearable length, the first of a doubled address counts, problems end up in the order
// of their lines. Lives for one import and fills the result that it is given.
class TImportCollector
{
public:
    TImportCollector(TDatapointKind kind, TImportResult& result, const TImportOptions& options);

    // Takes a datapoint that is written in `line`. Datapoints of the same key are doubled.
    void Add(TDatapoint datapoint, qsizetype line);

    void Report(qsizetype line, const QString& reason);

    // A name as it is shown; says at `line` what was changed about it.
    QString DisplayName(const QString& name, qsizetype line);

    // The EIS type that `text` was found to stand for. One that is none is said to stay open; empty text has no type.
    int KnownType(std::optional<int> eis, QStringView text, qsizetype line);

    // To be called for every line with the share that is read, 0 to 1. False when the import was cancelled; the reader
    // then returns. The share of the file's decoding comes before it.
    bool Advance(double done);

    void SetFormat(const QString& format);
    void SetTitle(const QString& title);
    bool IsCancelled() const { return m_result.Cancelled; }
    bool IsEmpty() const { return m_result.Datapoints.isEmpty(); }

    // Puts the problems in order; a cancelled import keeps no datapoint.
    void Finish();

private:
    struct TFirst
    {
        qsizetype Line = 0;
        bool Reported = false;
    };

    void ReportDoubled(const QString& address, TFirst& first, qsizetype line);

    TDatapointKind m_kind;
    TImportResult& m_result;
    const TImportOptions& m_options;
    QHash<QString, TFirst> m_firsts;
    int m_untilProgress = 0;
};
