#pragma once

#include "Vlmessages.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <ostream>
#include <type_traits>

// googletest prints these as text.
void PrintTo(const QString& text, std::ostream* stream);
void PrintTo(const QByteArray& bytes, std::ostream* stream);

// Stands in for the user while it lives: records every message and answers questions.
class TRecordedMessages final : public IMessageHandler
{
public:
    TRecordedMessages();
    ~TRecordedMessages() override;

    void ShowInformation(const QString& text) override { Informations.append(text); }
    void ShowError(const QString& text) override { Errors.append(text); }
    bool Confirm(const QString& text) override;
    void Note(const QObject* source, const QString& text) override;

    bool Answer = true;
    // What happens while a question stands.
    std::function<void()> WhenAsked;
    QStringList Informations;
    QStringList Errors;
    QStringList Questions;
    QStringList Notes;

private:
    IMessageHandler* m_previous;
};

// A project in a temporary directory, open in the user manager while it lives (which it also holds meanwhile). The
// project has the folders for scenes and for the schedule, and nothing in them. KOLT_HOME is unset unless a test sets
// it; it is unset again at the end.
class TTemporaryProject
{
public:
    explicit TTemporaryProject(const QString& name = QStringLiteral("Haus"));
    ~TTemporaryProject();

    // Platform form, without a trailing separator.
    QString Root() const;
    QString Path(const QString& relative) const;
    QString Scenes(const QString& file = {}) const;
    // The weekly schedule's document; its folder exists.
    QString Schedule() const;

    void Write(const QString& relative, const QByteArray& content) const;
    QByteArray Read(const QString& relative) const;
    bool Exists(const QString& relative) const;

private:
    QTemporaryDir m_directory;
    QString m_name;
};

// The content of a file below tests/data; fails the test when it is missing.
QByteArray TestData(const QString& relative);
QString TestDataPath(const QString& relative);
QByteArray ReadAll(const QString& path);
void WriteAll(const QString& path, const QByteArray& content);
