#include "CmdTreeFrame.h"

#include "CommandItems.h"
#include "LineFinder.h"
#include "Vlapputils.h"
#include "Vlerrors.h"
#include "Vltext.h"

#include <QContextMenuEvent>
#include <QCoreApplication>

TCmdTreeFrame::TCmdTreeFrame(QWidget* parent) : TDragScrollTree(parent) {}

TCmdTreeFrame::~TCmdTreeFrame()
{
    // At the end of the application the host takes the manager down first.
    if (!QCoreApplication::closingDown() && UserManager())
        UserManager()->RemoveListener(this, &TCmdTreeFrame::HandleProjectChange);
}

void TCmdTreeFrame::ExecuteCmd(const char* command, bool& handled)
{
    handled = true;
    const QString text = CommandText(command);
    BeginCommand(text);
    WalkCommandItems(TURLName(text), [this](const QString& key, const QString& value) {
        if (SameText(key, u"color"))
            ApplyColor(this, QPalette::Text, StrToColorDef(value, DefaultColor));
        else if (SameText(key, u"bgcolor"))
            ApplyColor(this, QPalette::Base, StrToColorDef(value, WindowColor));
        else
            ApplyCommandItem(key, value);
    });
    FinishCommand();
}

TDocumentPlace TCmdTreeFrame::DocumentPlace(const QString& path, int line) const
{
    TLineFinder finder(line);
    WriteDocument(path, finder);
    auto* node = static_cast<TTreeNode*>(itemFromIndex(indexFromItem(finder.Node())));
    if (!node)
        return {};
    return [place = TNodeRef(node)] {
        TDragScrollTree* tree = place ? place.Get()->Tree() : nullptr;
        if (!tree)
            return false;
        tree->SelectNode(place.Get());
        tree->scrollToItem(place.Get());
        return true;
    };
}

void TCmdTreeFrame::WriteDocument(const QString&, QIODevice&) const {}

void TCmdTreeFrame::SetProjectListener(const QString& path)
{
    // The manager tolerates a listener that is added again.
    if (UserManager() && TUserManager::DependsOnProject(path))
        UserManager()->AddListener(this, &TCmdTreeFrame::HandleProjectChange);
}

QString TCmdTreeFrame::DecodePath(const QString& path)
{
    return ToPackagePath(UserManager() ? UserManager()->DecodeVars(path) : path);
}

QString TCmdTreeFrame::ExpandPath(const QString& path)
{
    return UserManager() ? UserManager()->EnvToFilePath(path) : ToPackagePath(path);
}

void TCmdTreeFrame::HandleProjectChange(QObject* sender, TUserProperty, const QString&)
{
    if (sender == UserManager() && UserManager()->GetActiveProject())
        Guarded([this] { ReloadForProject(); });
}

void TCmdTreeFrame::ApplyMenuRules()
{
    if (m_popupMenu)
        m_popupMenu->ApplyRules();
}

TTreeNode* TCmdTreeFrame::MenuNode() const
{
    return m_popupMenu ? m_popupMenu->Target(SelectedNode()) : SelectedNode();
}

bool TCmdTreeFrame::IsMenuValid() const
{
    const TTreeNode* node = MenuNode();
    return SelectedNode() && node && !IsFixed(node);
}

int TCmdTreeFrame::CountNodes() const
{
    int count = 0;
    for (const TTreeNode* node = TopNode(); node; node = node->Next())
        ++count;
    return count;
}

void TCmdTreeFrame::HandleEditable(bool editable)
{
    if (m_popupMenu)
        m_popupMenu->SetAttached(editable);
    if (editable)
        HandleSelectionChange();
}

void TCmdTreeFrame::contextMenuEvent(QContextMenuEvent* event)
{
    if (!GetEditable() || !m_popupMenu)
        return;
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    TTreeNode* node = byMouse ? NodeAt(event->pos()) : SelectedNode();
    m_popupMenu->SetTarget(node);
    // A node inside a selection of several gets the focus and leaves the selection as it is.
    if (IsMenuValid())
        setCurrentItem(node, 0,
                       node->isSelected() ? QItemSelectionModel::NoUpdate : QItemSelectionModel::ClearAndSelect);
    m_popupMenu->Open(event->globalPos());
}

void RegisterEditor(const QString& className, const char* progId, TComponentFactory factory)
{
    RegisterComponent(className, std::move(factory));
    IInterface* found = nullptr;
    FindApplicationInterface(IID_IRegisterClient, &found);
    if (found && QCoreApplication::instance())
        static_cast<IRegisterClient*>(found)->RegisterComponentClass(QString::fromLatin1(progId), className);
}
