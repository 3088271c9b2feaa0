#include "IMenuTree.h"

#include "CaptionFile.h"
#include "dlgLogo.h"
#include "TreeImages.h"
#include "Vlapputils.h"
#include "Vlerrors.h"
#include "Vltext.h"

#include <QDir>
#include <QFileInfo>

namespace
{

const auto MenuTreeClass = QStringLiteral("TMenuTreeFrame");
const auto DefaultFile = QStringLiteral("%PRJPATH%\\_menu\\menu.xml");
constexpr int DefaultLevels = 2;

// True below the directory of a project that is not the active one.
bool IsOfAnotherProject(const QString& path)
{
    const TProject* active = UserManager() ? UserManager()->GetActiveProject() : nullptr;
    const QString root = active ? QFileInfo(active->GetRootDirectory()).canonicalFilePath() : QString();
    QDir directory(QFileInfo(ToPlatformPath(ExtractFileDir(path))).canonicalFilePath());
    do {
        if (directory.exists(TProject::ProjectFileName()))
            return directory.path() != root;
    } while (directory.cdUp());
    return false;
}

// The nodes of a caption file: a line at level 1 makes a root, the menu first.
TMenuNodes ReadCaptions(const QString& path)
{
    std::vector<TCaptionLine> lines = ReadCaptionFile(path);
    TMenuNode top(QString(), miRoot);
    BuildFromCaptions(lines, &top, [&top](TMenuNode* parent, const QString& caption) {
        const bool isRoot = parent == &top;
        const bool isLink = !isRoot && parent->Parent() == &top && parent->Index() == 1;
        TVlMenuItem item{.Caption = caption, .Kind = isLink ? mkLink : mkItem};
        const bool isMain = !isRoot && !isLink && parent->Parent() == &top;
        auto* node =
            isRoot ? new TMenuNode(caption, miRoot) : new TMenuNode(std::move(item), isMain ? miMainItem : miSubItem);
        parent->addChild(node);
        return node;
    });
    constexpr int Roots = 2;
    if (top.Count() != Roots)
        ThrowMalformedCaptions(path, static_cast<qsizetype>(lines.size()), QStringLiteral("Baum mit zwei Zweigen"));
    TMenuNodes roots;
    const QList<QTreeWidgetItem*> taken = top.takeChildren();
    for (QTreeWidgetItem* root : taken)
        roots.emplace_back(static_cast<TTreeNode*>(root));
    return roots;
}

} // namespace

TMenuTreeFrame::TMenuTreeFrame(QWidget* parent)
    : TCmdTreeFrame(parent), m_fileTemplate(DefaultFile), m_menuPath(ExpandPath(DefaultFile)), m_files(this)
{
    setObjectName(MenuTreeClass);
    setAccessibleName(QStringLiteral("Menu"));
    setExpandsOnDoubleClick(false);
    setSelectionMode(SingleSelection);
    InitializeMenu({});
    MakePopupMenu(this, PopupRows());
    SetEditable(true);
    connect(this, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* item) {
        if (item->parent())
            Guarded([&] { ShowInDialog(static_cast<TMenuNode*>(item)); });
    });
}

TMenuTreeFrame::~TMenuTreeFrame()
{
    FinalizeMenu();
}

int TMenuTreeFrame::InitializeMenu(const QString& path)
{
    SetImages({TreeImage(tiMainItem), TreeImage(tiSubItem), TreeImage(tiMenu)});
    if (path.isEmpty() || TopNode())
        return 0;
    ReplaceContent(ReadCaptions(path));
    m_menuRoot.Set(static_cast<TMenuNode*>(topLevelItem(0)));
    m_linkRoot.Set(static_cast<TMenuNode*>(topLevelItem(1)));
    return CountNodes();
}

void TMenuTreeFrame::BeginCommand(const QString&)
{
    SetMenuPath(ExpandPath(m_fileTemplate));
    m_styleTemplate.clear();
    m_outputTemplate.clear();
    m_header.StylePath.clear();
    m_outputPath.clear();
    m_header.Levels = DefaultLevels;
}

void TMenuTreeFrame::ApplyCommandItem(const QString& key, const QString& value)
{
    if (SameText(key, u"file")) {
        m_fileTemplate = value;
        SetMenuPath(DecodePath(value));
        LoadData(m_menuPath);
    } else if (SameText(key, u"style")) {
        m_styleTemplate = value;
        ResolveStyle();
    } else if (SameText(key, u"out")) {
        m_outputTemplate = value;
        ResolveOutput();
    } else if (SameText(key, u"level")) {
        m_header.Levels = StrToIntDef(value, DefaultLevels);
    } else if (SameText(key, u"alarm")) {
        m_alarmLink = value;
    } else if (SameText(key, u"config")) {
        m_configLink = value;
    } else if (SameText(key, u"logout")) {
        m_logoutLink = value;
    }
}

void TMenuTreeFrame::FinishCommand()
{
    // Also where the command names no file: the default one is the project's.
    SetProjectListener(m_fileTemplate);
    ApplyMenuRules();
}

void TMenuTreeFrame::ResolveStyle()
{
    const QString path = DecodePath(m_styleTemplate);
    if (FileExists(path))
        m_header.StylePath = path;
}

void TMenuTreeFrame::ResolveOutput()
{
    const QString path = DecodePath(m_outputTemplate);
    const bool canBeMade = FileExists(path) || (!path.isEmpty() && DirectoryExists(ExtractFileDir(path)));
    if (canBeMade && !IsOfAnotherProject(path))
        m_outputPath = path;
}

void TMenuTreeFrame::SetMenuPath(const QString& path)
{
    // The links of another directory are not those of this menu.
    if (ExtractFileDir(path) != ExtractFileDir(m_menuPath))
        m_linksPath.clear();
    m_menuPath = path;
}

// Whatever named a file of the project before does not name one of this project.
void TMenuTreeFrame::ForgetProjectPaths()
{
    m_linksPath.clear();
    m_header.Logo.clear();
    m_header.StylePath.clear();
    m_outputPath.clear();
    ResolveStyle();
    ResolveOutput();
}

// One that was asked for in the other project is answered there or not at all.
void TMenuTreeFrame::CloseLogoDialogs()
{
    const QList<TLogoDialog*> dialogs = findChildren<TLogoDialog*>();
    for (TLogoDialog* dialog : dialogs) {
        dialog->SetCloseEvent({});
        dialog->close();
    }
}

void TMenuTreeFrame::ReloadForProject()
{
    CloseLogoDialogs();
    ForgetProjectPaths();
    EnsureRoots();
    RemoveStrays();
    ReplaceChildren(LinkRoot(), {});
    ReplaceChildren(MenuRoot(), {});
    SetMenuPath(DecodePath(m_fileTemplate));
    LoadData(m_menuPath);
}

void InitializeMenuUnit()
{
    RegisterEditor(MenuTreeClass, ProgIdMenuTree,
                   [](QWidget* parent) -> QWidget* { return new TMenuTreeFrame(parent); });
}

void FinalizeMenuUnit()
{
    UnregisterComponent(MenuTreeClass);
}
