#include "MainWindow.h"

#include "MessagePane.h"
#include "NewProjectDialog.h"
#include "Options.h"
#include "Pane.h"
#include "PaneMenu.h"
#include "Vlagreements.h"
#include "Vlerrors.h"
#include "Vlprogramfiles.h"

#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QMessageBox>
#include <QUrl>

QAction* TMainWindow::AddCommand(QMenu& menu, const QString& name, const QString& caption, const QKeySequence& shortcut,
                                 void (TMainWindow::*method)())
{
    auto* action = menu.addAction(caption);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    connect(action, &QAction::triggered, this, [this, method] { Guarded([this, method] { (this->*method)(); }); });
    FolderManager().RegisterAction(name, action);
    return action;
}

void TMainWindow::BuildMenus()
{
    BuildProjectMenu();
    menuBar()->addMenu(new TPaneMenu(m_panes, this));
    m_viewMenu = menuBar()->addMenu(QStringLiteral("&Ansicht"));
    m_viewMenu->setObjectName(QStringLiteral("ViewMenu"));
    RebuildViewMenu();
    connect(&m_panes, &TPanes::PanesChanged, this, &TMainWindow::RebuildViewMenu);
    BuildHelpMenu();
}

void TMainWindow::BuildProjectMenu()
{
    QMenu* menu = menuBar()->addMenu(QStringLiteral("&Projekt"));
    menu->setObjectName(QStringLiteral("ProjectMenu"));
    AddCommand(*menu, QStringLiteral("ProjectNew"), QStringLiteral("&Neu..."), QKeySequence(Qt::CTRL | Qt::Key_N),
               &TMainWindow::AskForNewProject);
    AddCommand(*menu, QStringLiteral("ProjectOpen"), QStringLiteral("Ö&ffnen..."), QKeySequence(Qt::CTRL | Qt::Key_O),
               &TMainWindow::AskForProject);
    m_recentMenu = menu->addMenu(QStringLiteral("&Zuletzt geöffnet"));
    m_recentMenu->setObjectName(QStringLiteral("RecentMenu"));
    connect(menu, &QMenu::aboutToShow, this, &TMainWindow::RebuildRecentMenu);
    m_closeAction = AddCommand(*menu, QStringLiteral("ProjectClose"), QStringLiteral("&Schließen"),
                               QKeySequence(Qt::CTRL | Qt::Key_W), &TMainWindow::CloseProjectByMenu);
    menu->addSeparator();
    m_browserAction = AddCommand(*menu, QStringLiteral("OpenInBrowser"), QStringLiteral("Im &Browser öffnen"),
                                 QKeySequence(Qt::CTRL | Qt::Key_B), &TMainWindow::OpenMenuInBrowser);
    menu->addSeparator();
    AddCommand(*menu, QStringLiteral("Quit"), QStringLiteral("B&eenden"), QKeySequence(Qt::CTRL | Qt::Key_Q),
               &TMainWindow::CloseWindow);
}

void TMainWindow::BuildHelpMenu()
{
    QMenu* menu = menuBar()->addMenu(QStringLiteral("&Hilfe"));
    menu->setObjectName(QStringLiteral("HelpMenu"));
    AddCommand(*menu, QStringLiteral("About"), QStringLiteral("Ü&ber..."), {}, &TMainWindow::ShowAbout);
}

// The entries of the panes belong to the panes and are gone with them.
void TMainWindow::RebuildViewMenu()
{
    m_viewMenu->clear();
    for (TPane* pane : m_panes.All())
        m_viewMenu->addAction(pane->toggleViewAction());
    m_viewMenu->addAction(m_messages->toggleViewAction());
    m_viewMenu->addSeparator();
    AddCommand(*m_viewMenu, QStringLiteral("NextPane"), QStringLiteral("&Nächster Bereich"), QKeySequence(Qt::Key_F6),
               &TMainWindow::NextPane);
    AddCommand(*m_viewMenu, QStringLiteral("PreviousPane"), QStringLiteral("&Voriger Bereich"),
               QKeySequence(Qt::SHIFT | Qt::Key_F6), &TMainWindow::PreviousPane);
    m_viewMenu->addSeparator();
    AddCommand(*m_viewMenu, QStringLiteral("ResetArrangement"), QStringLiteral("Anordnung &zurücksetzen"), {},
               &TMainWindow::ResetArrangement);
}

void TMainWindow::RebuildRecentMenu()
{
    m_recentMenu->clear();
    const QStringList directories = m_recent.List();
    for (const QString& directory : directories) {
        const qsizetype number = m_recentMenu->actions().size() + 1;
        QString caption = QDir::toNativeSeparators(directory);
        caption.replace(u'&', QStringLiteral("&&"));
        const QString mnemonic = number < 10 ? QStringLiteral("&%1  ") : QStringLiteral("%1  ");
        QAction* action = m_recentMenu->addAction(mnemonic.arg(number) + caption);
        connect(action, &QAction::triggered, this,
                [this, directory] { Guarded([this, directory] { OpenRecentProject(directory); }); });
    }
    m_recentMenu->setEnabled(!directories.isEmpty());
}

void TMainWindow::AskForNewProject()
{
    TNewProjectDialog dialog(this);
    if (dialog.exec() == QDialog::Accepted)
        CreateProject(dialog.GetDirectory(), dialog.GetName());
}

void TMainWindow::AskForProject()
{
    const QString directory = QFileDialog::getExistingDirectory(this, QStringLiteral("Projekt öffnen"));
    if (!directory.isEmpty())
        OpenProject(directory);
}

// What the last export of the menu has made, as the visualisation would show it.
void TMainWindow::OpenMenuInBrowser()
{
    const TProject* project = UserManager()->GetActiveProject();
    if (!project)
        throw TUserError(QStringLiteral("Es ist kein Projekt geöffnet."));
    QString page = QDir(project->GetRootDirectory()).filePath(QStringLiteral("_menu/menu.html"));
    // The editor knows better, when there is one.
    for (const TPane* pane : m_panes.All()) {
        QWidget* component = pane->Component();
        QString exported;
        if (component && component->metaObject()->indexOfMethod("ExportedPage()") >= 0)
            QMetaObject::invokeMethod(component, "ExportedPage", Qt::DirectConnection, Q_RETURN_ARG(QString, exported));
        if (!exported.isEmpty())
            page = exported;
    }
    if (!QFileInfo(page).isFile())
        throw TUserError(QStringLiteral("\"%1\" gibt es noch nicht. Exportieren Sie zuerst das Menu.").arg(page));
    // A command of the project may name any file as the page.
    if (MayRunProgram(page) && !IsAgreedTo(QStringLiteral("Im Browser öffnen"), page, page))
        return;
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(page)))
        throw TUserError(QStringLiteral("\"%1\" lässt sich nicht im Browser öffnen.").arg(page));
}

void TMainWindow::ShowAbout()
{
    QMessageBox::about(this, QStringLiteral("Über Velmora Folders"),
                       QStringLiteral("<h3>%1</h3><p>Editoren für Projekte der Gebäudeleittechnik und die Werkbank "
                                      "dazu.</p>")
                           .arg(VersionText()));
}
