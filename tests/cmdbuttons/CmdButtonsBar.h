#pragma once

#include "CmdButton.h"
#include "Folderman.h"
#include "ICmdButtons.h"
#include "TemporarySettings.h"
#include "TestSupport.h"
#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QApplication>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <memory>

// The captions of the entries that most tests have, and of the one in the other project.
inline const auto A = QStringLiteral("a");
inline const auto B = QStringLiteral("b");
inline const auto C = QStringLiteral("c");
inline const auto Other = QStringLiteral("anderes");

// The command of the default layout.
inline constexpr auto FolderCommand = "Velmora.CmdButtons.1://%PRJPATH%/_buttons";

// Throws at every note and records errors.
class TThrowingNotes final : public IMessageHandler
{
public:
    TThrowingNotes() : m_previous(SetMessageHandler(this)) {}
    ~TThrowingNotes() override { SetMessageHandler(m_previous); }
    TThrowingNotes(const TThrowingNotes&) = delete;
    TThrowingNotes& operator=(const TThrowingNotes&) = delete;

    void ShowInformation(const QString&) override {}
    void ShowError(const QString& text) override { Errors.append(text); }
    bool Confirm(const QString&) override { return false; }
    void Note(const QObject*, const QString&) override { throw TUserError(QStringLiteral("Notiz")); }

    QStringList Errors;

private:
    IMessageHandler* m_previous;
};

// A bar in a window, with a project whose folder _buttons is there and empty, and somebody who takes command texts.
class TBarTest : public testing::Test
{
protected:
    TBarTest();
    ~TBarTest() override;

    TICmdButtons& Bar() { return *m_bar; }
    void EndBar() { m_bar.reset(); }
    bool HasBar() const { return m_bar != nullptr; }

    // An entry file below the project; its command is pane://NAME unless the text says something else.
    void WriteEntry(const QString& name, const QByteArray& text = {}) const;
    void WriteEntries(const QStringList& names) const;
    void WriteDefinition(const QByteArray& names) const;
    // Sends the bar a command text; whether it was handled.
    bool Execute(const char* command = FolderCommand);

    QStringList Captions();
    // Fails the test and throws when there is none.
    TCmdButton* Button(const QString& caption);
    void Click(const QString& caption);

    // Opens the popup menu with the right mouse button: on a button, or beside all of them for an empty caption.
    void OpenPopup(const QString& caption);
    // The entries of the popup menu that can be seen now.
    QStringList VisibleEntries();
    // Chooses an entry of the open popup menu with the mouse.
    void Choose(const QString& entry);

    // The field of the properties dialog that is open.
    template <class TField> static TField* Field(const char* name)
    {
        QWidget* dialog = QApplication::activeModalWidget();
        auto* field = dialog ? dialog->findChild<TField*>(QLatin1StringView(name)) : nullptr;
        if (!field)
            throw std::runtime_error(std::string("no field ") + name);
        return field;
    }
    static void Type(const char* name, const QString& text);
    static void Press(const char* button);
    // Fills the dialog with what makes it valid and presses OK.
    static void Confirm(const QString& caption);

    // Another project, whose bar has one button, "anderes". OpenOther makes it the active one.
    QString OtherRoot() const { return m_otherDirectory.filePath(QStringLiteral("anderes")); }
    void OpenOther() const { UserManager()->OpenProject(OtherRoot()); }

    // What the bar has left to be destroyed later.
    static void Settle();

    TTemporarySettings m_settings;
    TTemporaryProject m_project;
    TRecordedMessages m_messages;
    QStringList m_commands; // texts that buttons have sent

private:
    QTemporaryDir m_otherDirectory;
    QWidget m_window;
    std::unique_ptr<TICmdButtons> m_bar;
};
