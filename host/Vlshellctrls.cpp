#include "Vlshellctrls.h"

#include "Vlapputils.h"
#include "Vlerrors.h"
#include "Vlfilewatch.h"
#include "Vlmessages.h"
#include "Vlshelldelegate.h"
#include "Vlshellmodel.h"
#include "Vlshellrefresh.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHelpEvent>
#include <QKeyEvent>

namespace
{

QString CleanPath(const QString& path)
{
    return path.isEmpty() ? QString() : QDir::cleanPath(QFileInfo(ToPlatformPath(path)).absoluteFilePath());
}

} // namespace

QString TShellFolder::PathName() const
{
    return QFile::decodeName(m_nativePath);
}

TCustomShellTreeView::TCustomShellTreeView(QWidget* parent)
    : QTreeView(parent), m_model(new TShellModel(this)), m_refresh(new TShellRefresh(this))
{
    setObjectName(QStringLiteral("ShellTree"));
    setModel(m_model);
    setItemDelegate(
        new TShellDelegate(this, [this](const QModelIndex& index, const QString& name) { RenameItem(index, name); }));
    setHeaderHidden(true);
    // What makes a folder with a hundred thousand files shown at once.
    setUniformRowHeights(true);
    setEditTriggers(NoEditTriggers);
    setSelectionMode(SingleSelection);
    setDragEnabled(true);
    setDragDropMode(DragOnly);
    MakeMenu();
    connect(m_model, &TShellModel::Listing, m_refresh, &TShellRefresh::Add);
    connect(m_refresh, &TShellRefresh::Due, this, &TCustomShellTreeView::HandleDue);
    connect(this, &QTreeView::activated, this, &TCustomShellTreeView::HandleActivated);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &TCustomShellTreeView::UpdateActions);
    UpdateActions();
}

TCustomShellTreeView::~TCustomShellTreeView() = default;

bool TCustomShellTreeView::IsSameFolder(const QString& a, const QString& b)
{
    const QString cleanA = CleanPath(a);
    const QString cleanB = CleanPath(b);
    if (cleanA == cleanB)
        return true;
    const QString canonical = QFileInfo(cleanA).canonicalFilePath();
    return !canonical.isEmpty() && canonical == QFileInfo(cleanB).canonicalFilePath();
}

void TCustomShellTreeView::SetRoot(const QString& path)
{
    if (!Root().isEmpty() && !path.isEmpty() && IsSameFolder(path, Root())) {
        Refresh();
        return;
    }
    DrainChanges();
    const QByteArray root = QFile::encodeName(CleanPath(path));
    m_refresh->SetRoot(root);
    m_model->SetRoot(root);
    const QModelIndex item = m_model->RootItem();
    if (item.isValid()) {
        m_model->fetchMore(item);
        expand(item);
        selectionModel()->setCurrentIndex(item, QItemSelectionModel::NoUpdate);
    }
    ApplyWatch();
    UpdateActions();
}

QString TCustomShellTreeView::Root() const
{
    return QFile::decodeName(m_model->Root());
}

void TCustomShellTreeView::SetObjects(TShellObjects objects)
{
    m_model->SetObjects(objects);
}

TShellObjects TCustomShellTreeView::Objects() const
{
    return m_model->Objects();
}

void TCustomShellTreeView::SetAutoRefresh(bool on)
{
    m_refresh->SetOn(on);
    if (on)
        Refresh();
}

bool TCustomShellTreeView::GetAutoRefresh() const
{
    return m_refresh->IsOn();
}

void TCustomShellTreeView::Refresh()
{
    m_refresh->Follow(m_model->ListedFolders());
    m_model->RefreshAll();
}

void TCustomShellTreeView::HandleDue(const QSet<QByteArray>& folders)
{
    m_model->Refresh(folders);
    m_refresh->Follow(m_model->ListedFolders());
    UpdateActions();
}

void TCustomShellTreeView::SetHotTracking(bool on)
{
    m_hotTracking = on;
    viewport()->setMouseTracking(on);
    viewport()->setAttribute(Qt::WA_Hover, true);
    viewport()->update();
}

std::optional<TShellFolder> TCustomShellTreeView::SelectedFolder() const
{
    const TShellNode* node = m_model->NodeOf(SelectedIndex());
    if (!node)
        return std::nullopt;
    return TShellFolder(m_model->PathOf(node), node->Entry.Kind == skFolder);
}

QModelIndex TCustomShellTreeView::SelectedIndex() const
{
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    return selected.isEmpty() ? QModelIndex() : selected.first();
}

bool TCustomShellTreeView::SelectPath(const QByteArray& path)
{
    const QByteArray root = m_model->Root();
    QModelIndex item = m_model->RootItem();
    if (path != root) {
        const QByteArray prefix = root.endsWith('/') ? root : root + '/';
        if (!item.isValid() || !path.startsWith(prefix))
            return false;
        for (const QByteArray& name : path.mid(prefix.size()).split('/')) {
            m_model->fetchMore(item);
            item = m_model->Find(item, name);
        }
    }
    if (!item.isValid())
        return false;
    for (QModelIndex above = item.parent(); above.isValid(); above = above.parent())
        expand(above);
    setCurrentIndex(item);
    scrollTo(item);
    return true;
}

void TCustomShellTreeView::SetChangeEvent(TShellChangeEvent event)
{
    const bool had = HasChangeEvent();
    m_change = std::move(event);
    if (had != HasChangeEvent())
        ApplyWatch();
}

void TCustomShellTreeView::SetIgnoredFile(const QString& path)
{
    if (path == m_ignoredFile)
        return;
    DrainChanges();
    const QByteArray before = IgnoredBelowRoot();
    m_ignoredFile = path;
    if (m_watch && IgnoredBelowRoot() != before)
        ApplyWatch();
}

// Told in the root's own spelling; empty where it lies elsewhere.
QByteArray TCustomShellTreeView::IgnoredBelowRoot() const
{
    const QFileInfo file(ToPlatformPath(m_ignoredFile));
    const QString folder = QFileInfo(file.path()).canonicalFilePath();
    QString root = QFileInfo(Root()).canonicalFilePath();
    if (m_ignoredFile.isEmpty() || root.isEmpty())
        return {};
    if (root == u'/')
        root.clear();
    if (!(folder + u'/').startsWith(root + u'/'))
        return {};
    return QFile::encodeName(QDir::cleanPath(Root() + folder.mid(root.size()) + u'/' + file.fileName()));
}

void TCustomShellTreeView::ApplyWatch()
{
    if (!m_change || m_model->Root().isEmpty()) {
        // Not deleted at once: it may be telling the change that led here.
        if (m_watch) {
            m_watch->disconnect(this);
            m_watch->deleteLater();
            m_watch = nullptr;
        }
        return;
    }
    if (!m_watch) {
        m_watch = new TFileWatch(this);
        connect(m_watch, &TFileWatch::Changed, this, &TCustomShellTreeView::HandleChange);
        connect(m_watch, &TFileWatch::Limited, this, [this](const QString& reason) { Note(this, reason); });
    }
    m_watch->SetIgnoredFile(IgnoredBelowRoot());
    m_watch->SetRoot(m_model->Root());
}

void TCustomShellTreeView::DrainChanges()
{
    if (m_watch)
        m_watch->Drain();
}

void TCustomShellTreeView::HandleChange(const TShellChange& change)
{
    m_refresh->HandleChanged(change.Path);
    if (!change.NewPath.isEmpty())
        m_refresh->HandleChanged(change.NewPath);
    // A copy: who is told may let go of the event.
    const TShellChangeEvent event = m_change;
    if (event)
        Guarded([&] { event(this, change.Path, change.NewPath, change.Kind); });
}

void TCustomShellTreeView::HandleActivated(const QModelIndex& index)
{
    const TShellNode* node = m_model->NodeOf(index);
    if (!node || index != SelectedIndex() || node->Entry.Kind == skSpecial)
        return;
    const TDefaultActionEvent event = m_defaultAction;
    if (event)
        Guarded([&] { event(this); });
}

void TCustomShellTreeView::keyPressEvent(QKeyEvent* event)
{
    const QModelIndex item = SelectedIndex();
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && state() != EditingState && m_model->hasChildren(item) && item.isValid())
        setExpanded(item, !isExpanded(item));
    QTreeView::keyPressEvent(event);
}

bool TCustomShellTreeView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && !m_showHint)
        return true;
    return QTreeView::viewportEvent(event);
}

bool TCustomShellTreeView::event(QEvent* event)
{
    // Comes before a key is looked up among the short cuts.
    if (event->type() == QEvent::ShortcutOverride)
        UpdateActions();
    return QTreeView::event(event);
}
