#include "IMenuTree.h"

#include "Formatting.h"
#include "MenuExport.h"
#include "Vlapputils.h"
#include "Vlerrors.h"
#include "Vlhourglass.h"
#include "Vlmessages.h"

#include <QFileInfo>
#include <QScopedValueRollback>

namespace
{

const auto LinksFile = QStringLiteral("dplinks.xml");

bool IsSameFile(const QString& a, const QString& b)
{
    return ToPackagePath(a) == ToPackagePath(b) || QFileInfo(ToPlatformPath(a)) == QFileInfo(ToPlatformPath(b));
}

QString CountsText(const TMenuNode* menu, const TMenuNode* links)
{
    int subItems = 0;
    for (int i = 0; menu && i < menu->Count(); ++i)
        subItems += menu->Child(i)->Count();
    return QStringLiteral("%1 Menupunkte, %2 Untermenupunkte, %3 Links")
        .arg(menu ? menu->Count() : 0)
        .arg(subItems)
        .arg(links ? links->Count() : 0);
}

} // namespace

// Both stand there, in their order, before anything is read: nothing that is read takes their places.
void TMenuTreeFrame::EnsureRoots()
{
    if (MenuRoot() && LinkRoot())
        return;
    TMenuNodes roots;
    roots.push_back(MakeMenuRoot());
    roots.push_back(MakeLinkRoot());
    ReplaceContent(std::move(roots));
    m_menuRoot.Set(static_cast<TMenuNode*>(topLevelItem(0)));
    m_linkRoot.Set(static_cast<TMenuNode*>(topLevelItem(1)));
}

void TMenuTreeFrame::RemoveStrays()
{
    constexpr int Roots = 2;
    while (topLevelItemCount() > Roots)
        delete takeTopLevelItem(Roots);
}

void TMenuTreeFrame::LoadData(const QString& path)
{
    {
        const QScopedValueRollback loading(m_loading, true);
        Clipboard().Clear();
        LoadMenu(path);
        LoadLinks(JoinFilePath(ExtractFileDir(path), {LinksFile}));
    }
    SetModified(false);
    ApplyMenuRules();
    Note(this, QStringLiteral("%1 geladen").arg(CountsText(MenuRoot(), LinkRoot())));
}

void TMenuTreeFrame::LoadMenu(const QString& path)
{
    EnsureRoots();
    m_files.Clear();
    if (!FileExists(path)) {
        if (DirectoryExists(ExtractFileDir(path)))
            m_menuPath = path;
        return;
    }
    m_menuPath = path;
    const THourglass hourglass;
    const TRepaintPause pause(this);
    std::optional<TMenuContent> content = ReadMenu(path);
    m_currentNode.Set(nullptr);
    RemoveStrays();
    ReplaceChildren(MenuRoot(), content ? std::move(content->Items) : TMenuNodes());
    MenuRoot()->setExpanded(true);
    if (!content)
        return;
    m_files.MarkRead(path);
    for (std::unique_ptr<TTreeNode>& stray : content->Strays)
        addTopLevelItem(stray.release());
    if (content->Logo)
        m_header.Logo = *content->Logo;
}

void TMenuTreeFrame::LoadLinks(const QString& path)
{
    EnsureRoots();
    if (!FileExists(path))
        return;
    m_linksPath = path;
    const THourglass hourglass;
    const TRepaintPause pause(this);
    std::optional<TMenuNodes> links = ReadLinks(path);
    m_currentNode.Set(nullptr);
    ReplaceChildren(LinkRoot(), links ? std::move(*links) : TMenuNodes());
    if (!links)
        return;
    m_files.MarkRead(path);
    SelectLastLink();
}

// As if the links had been made one by one: each becomes the selection, and the last one stays it.
void TMenuTreeFrame::SelectLastLink()
{
    if (LinkRoot()->Count() == 0)
        return;
    LinkRoot()->setExpanded(true);
    SelectNode(LinkRoot()->Child(LinkRoot()->Count() - 1));
}

void TMenuTreeFrame::SaveToStream(QIODevice& stream) const
{
    WriteMenu(stream, MenuRoot(), m_header);
}

void TMenuTreeFrame::WriteDocument(const QString& path, QIODevice& device) const
{
    if (IsSameDocument(path, m_menuPath))
        SaveToStream(device);
    else if (IsSameDocument(path, m_linksPath))
        WriteLinks(device, LinkRoot());
}

// The menu goes to MenuPath, whatever the caller names.
void TMenuTreeFrame::SaveMenu(const QString&)
{
    // Where nothing was loaded yet, the menu belongs to the project that is open now.
    if (!MenuRoot())
        SetMenuPath(ExpandPath(m_fileTemplate));
    // A path that still asks for a project would make a directory of that name wherever the program was started.
    if (TUserManager::DependsOnProject(m_menuPath))
        throw TUserError(QStringLiteral("Ohne geöffnetes Projekt kann das Menu nicht exportiert werden."));
    const THourglass hourglass;
    PrepareMenuDirectory(ExtractFileDir(m_menuPath));
    m_files.Write(m_menuPath, [this](QIODevice& device) { SaveToStream(device); });
    TranslateMenu();
}

void TMenuTreeFrame::SaveLinks(const QString& path)
{
    const THourglass hourglass;
    if (m_linksPath.isEmpty())
        m_linksPath = JoinFilePath(ExtractFileDir(m_menuPath), {LinksFile});
    m_files.Write(path.isEmpty() ? m_linksPath : path, [this](QIODevice& device) { WriteLinks(device, LinkRoot()); });
}

QString TMenuTreeFrame::ExportedPage() const
{
    const bool isDefault = m_outputPath.isEmpty() || IsSameFile(m_outputPath, m_menuPath);
    return ToPlatformPath(isDefault ? ChangeFileExt(m_menuPath, QStringLiteral(".html")) : m_outputPath);
}

QStringList TMenuTreeFrame::ReadableRoots() const
{
    QStringList roots{ExpandEnvStrings(QStringLiteral("%NORHOME%"))};
    const TProject* project = UserManager() ? UserManager()->GetActiveProject() : nullptr;
    if (project)
        roots.append(project->GetRootDirectory());
    return roots;
}

void TMenuTreeFrame::TranslateMenu()
{
    if (!FileExists(m_menuPath))
        return;
    if (m_outputPath.isEmpty() || IsSameFile(m_outputPath, m_menuPath))
        m_outputPath = ChangeFileExt(m_menuPath, QStringLiteral(".html"));
    if (m_header.StylePath.isEmpty() || IsSameFile(m_header.StylePath, m_menuPath))
        m_header.StylePath = ChangeFileExt(m_menuPath, QStringLiteral(".xsl"));
    if (!FileExists(m_header.StylePath))
        return;
    TTransformationOutcome outcome;
    try {
        outcome = TransformMenu({.StylePath = m_header.StylePath,
                                 .MenuPath = m_menuPath,
                                 .OutputPath = m_outputPath,
                                 .ReadableRoots = ReadableRoots()});
    } catch (const TFileError& error) {
        outcome.Reason = error.Message(); // the links are written all the same
    }
    if (outcome.Saved >= 0)
        return;
    if (!outcome.Reason.isEmpty())
        Note(this, outcome.Reason);
    ShowError(FormatText("Error (%d): Transformation failed.", outcome.Saved));
}

void TMenuTreeFrame::MenuAction_Reload()
{
    LoadData(m_menuPath);
}

void TMenuTreeFrame::MenuAction_Export()
{
    CommitEdits();
    SaveMenu(m_menuPath);
    SaveLinks(m_linksPath);
    SetModified(false);
    Note(this, QStringLiteral("%1 exportiert nach %2")
                   .arg(CountsText(MenuRoot(), LinkRoot()), ToPlatformPath(ExtractFileDir(m_menuPath))));
}
