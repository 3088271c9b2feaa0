#include "TestSupport.h"

#include "Userman.h"

#include <QDir>
#include <QFile>
#include <gtest/gtest.h>

void PrintTo(const QString& text, std::ostream* stream)
{
    *stream << '"' << text.toStdString() << '"';
}

void PrintTo(const QByteArray& bytes, std::ostream* stream)
{
    *stream << '"' << bytes.toPercentEncoding(" \"<>=/?,;:[]\r\n").toStdString() << '"';
}

TRecordedMessages::TRecordedMessages() : m_previous(SetMessageHandler(this)) {}

TRecordedMessages::~TRecordedMessages()
{
    SetMessageHandler(m_previous);
}

bool TRecordedMessages::Confirm(const QString& text)
{
    Questions.append(text);
    if (WhenAsked)
        WhenAsked();
    return Answer;
}

void TRecordedMessages::Note(const QObject*, const QString& text)
{
    Notes.append(text);
}

TTemporaryProject::TTemporaryProject(const QString& name) : m_name(name)
{
    qunsetenv("KOLT_HOME");
    SetupUserManager();
    TProject::Create(Root(), name);
    UserManager()->OpenProject(Root());
}

TTemporaryProject::~TTemporaryProject()
{
    UserManager()->CloseProject();
    DisposeUserManager();
    qunsetenv("KOLT_HOME");
}

QString TTemporaryProject::Root() const
{
    return m_directory.filePath(m_name);
}

QString TTemporaryProject::Path(const QString& relative) const
{
    return Root() + u'/' + relative;
}

QString TTemporaryProject::Scenes(const QString& file) const
{
    return Path(QStringLiteral("_config/data/scenes/") + file);
}

QString TTemporaryProject::Schedule() const
{
    return Path(QStringLiteral("_config/data/schedule/schedule.xml"));
}

void TTemporaryProject::Write(const QString& relative, const QByteArray& content) const
{
    WriteAll(Path(relative), content);
}

QByteArray TTemporaryProject::Read(const QString& relative) const
{
    return ReadAll(Path(relative));
}

bool TTemporaryProject::Exists(const QString& relative) const
{
    return QFile::exists(Path(relative));
}

QString TestDataPath(const QString& relative)
{
    return QStringLiteral(VELMORA_TEST_DATA "/") + relative;
}

QByteArray TestData(const QString& relative)
{
    return ReadAll(TestDataPath(relative));
}

QByteArray ReadAll(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << "cannot read " << path.toStdString();
        return {};
    }
    return file.readAll();
}

void WriteAll(const QString& path, const QByteArray& content)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(content), content.size());
}
