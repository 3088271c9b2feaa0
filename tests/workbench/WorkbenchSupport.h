#pragma once

#include "HostServices.h"
#include "MainWindow.h"
#include "ModifiedGuard.h"
#include "TemporarySettings.h"
#include "TestComponent.h"
#include "TestSupport.h"
#include "OpenedUrls.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

// The names of the panes that most tests have.
inline const auto A = QStringLiteral("a");
inline const auto B = QStringLiteral("b");

// The pane that most tests open.
inline const auto Scenes = QStringLiteral("scenes");

// Answers as told and remembers what it was asked.
class TScriptedAsker final : public IModifiedAsker
{
public:
    TModifiedAnswer Ask(const QStringList& titles) override;

    TModifiedAnswer Answer = TModifiedAnswer::Cancel;
    QList<QStringList> Asked;
};

// A pane `id` with the test component.
TPaneSetup TestPane(const QString& id, const QString& command = {});

// A workbench without a project: the host's services, the test component as the editor of scenes, a window that is not
// shown yet.
class TWorkbenchTest : public ::testing::Test
{
protected:
    TWorkbenchTest();
    ~TWorkbenchTest() override;

    // A new project below the temporary directory; its directory. Not opened.
    QString MakeProject(const QString& name, const QByteArray& layout = {}) const;
    TMainWindow& Window() { return *m_window; }
    TPane& Pane(const QString& id);
    TTestComponent& Component(const QString& id);
    // Opens a project with one pane "scenes", shows the window and edits the pane.
    void OpenAndEdit();
    // Ends the window and makes a new one.
    void RestartWindow();

    TTemporarySettings m_settings;
    QTemporaryDir m_directory;
    TRecordedMessages m_messages;
    TScriptedAsker m_asker;
    THostServices m_services;

private:
    std::unique_ptr<TMainWindow> m_window;
};
