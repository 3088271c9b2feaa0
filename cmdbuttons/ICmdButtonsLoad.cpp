#include "ICmdButtons.h"

#include "ButtonDefinition.h"
#include "Folderman.h"
#include "Vlapputils.h"

#include <QCoreApplication>
#include <QEvent>
#include <QScopeGuard>
#include <QVBoxLayout>

void TICmdButtons::LoadCmdItems(const QString& path)
{
    // What is added to a hidden widget is shown, and laid out, in one go with it.
    m_layout->setEnabled(false);
    widget()->hide();
    const auto resume = qScopeGuard([this] {
        m_layout->setEnabled(true);
        // The content is as high as its buttons before they are shown in it; else each of them would be moved then.
        QEvent request(QEvent::LayoutRequest);
        QCoreApplication::sendEvent(this, &request);
        widget()->show();
        if (hasFocus() && m_layout->count() > 0)
            m_layout->itemAt(0)->widget()->setFocus(Qt::OtherFocusReason);
    });
    // Nothing new belongs to what is no longer shown, the folder of another project above all.
    m_sourceLocation.clear();
    const QString definition = JoinFilePath(path, {ButtonDefinitionFile});
    if (DirectoryExists(path) && !FileExists(definition))
        LoadFolder(path);
    else if (DirectoryExists(path))
        LoadDefinition(definition);
    else if (FileExists(path))
        LoadDefinition(path);
}

void TICmdButtons::LoadFolder(const QString& directory)
{
    if (m_category.isEmpty())
        m_category = GetLastPathItem(directory, PathSeparator);
    m_sourceLocation = directory;
    ReportTo([&] { FolderManager().AddFolder(directory, m_category); });
}

void TICmdButtons::LoadDefinition(const QString& file)
{
    if (m_category.isEmpty())
        m_category = GetLastPathItem(ExtractFileDir(file), PathSeparator);
    // The file and not its folder, also for new entries, which then cannot be saved: the file says which ones there
    // are.
    m_sourceLocation = file;
    const QStringList names = ReadButtonNames(ReadFile(file));
    ReportTo([&] { FolderManager().AddItems(names, m_category); });
}

// Receives the new items while `load` runs.
void TICmdButtons::ReportTo(const std::function<void()>& load)
{
    TFolderManager& manager = FolderManager();
    const auto restore =
        qScopeGuard([&manager, before = manager.GetNewItemEvent()] { manager.SetNewItemEvent(before); });
    manager.SetNewItemEvent(
        [this](QObject* sender, TNavigationPtr action) { NewButtonNotify(sender, std::move(action)); });
    load();
}
