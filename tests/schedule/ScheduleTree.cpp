#include "ScheduleTree.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

namespace
{

constexpr auto Command = R"(Velmora.ScheduleTree.1://?schedules=%PRJPATH%\_config\data\schedule\schedule.xml)";

// Entries as the reader gives them back, so that an export without a change gives the same bytes.
constexpr auto Schedule = R"(<?xml version="1.0" encoding="ISO-8859-1"?>
<eibnet>
<nodes name="Licht" access="3">
<node name="1/1/1" alias="Flur" eis="1" type="eib" access="2" enabled="1" minv="0" maxv="1">
<schedule time="07:05" dow="1111100" value="1" enabled="1" postprocess="0"/>
<schedule value="0" time="19:30:20" dow="1111111" enabled="0" note="x" postprocess="1"/>
</node>
<node name="1/1/2" alias="Küche" eis="1" type="eib" access="5" enabled="1" minv="" maxv="">
<schedule time="06:00" dow="0000011" value="1" enabled="1" postprocess="1"/>
</node>
</nodes>
<nodes name="Heizung" access="5">
<node name="40001" alias="Bad" eis="10" type="modbus" access="7" enabled="0" minv="5" maxv="30">
<schedule time="05:15" dow="1000000" value="21" enabled="1" postprocess="0"/>
</node>
</nodes>
<nodes name="Rollladen" access="20">
<node name="vSued" alias="Süd" eis="14" type="virtual" access="5" enabled="1" minv="" maxv="">
<schedule time="08:45" dow="0100000" value="100" enabled="1" postprocess="0"/>
</node>
<node name="vWest" alias="West" eis="6" type="virtual" access="5" enabled="1" minv="" maxv="">
</node>
</nodes>
<nodes name="Urlaub" access="0">
</nodes>
</eibnet>
)";

std::string Captions(const QMenu* menu, bool (QAction::*has)() const)
{
    QStringList captions;
    const QList<QAction*> actions = menu->actions();
    for (const QAction* action : actions) {
        if (!action->isSeparator() && (action->*has)())
            captions.append(action->text());
    }
    return captions.join(QStringLiteral(", ")).toStdString();
}

} // namespace

TScheduleTree::TScheduleTree()
{
    WriteAll(m_project.Schedule(), Document());
    m_frame = MakeFrame();
}

TScheduleTree::~TScheduleTree() = default;

QByteArray TScheduleTree::Document()
{
    return QString::fromUtf8(Schedule).replace(u'\n', QStringLiteral("\r\n")).toLatin1();
}

std::string TScheduleTree::EntryText(const char* time, const char* days, const char* value, int enabled,
                                     int postProcess)
{
    return QStringLiteral(R"(<schedule time="%1" dow="%2" value="%3" enabled="%4" postprocess="%5" />)")
        .arg(QString::fromUtf8(time), QString::fromUtf8(days), QString::fromUtf8(value))
        .arg(enabled)
        .arg(postProcess)
        .toStdString();
}

void TScheduleTree::Execute(TScheduleTreeFrame& frame, const QByteArray& command)
{
    bool handled = false;
    frame.ExecuteCmd(command.constData(), handled);
    EXPECT_TRUE(handled);
}

std::unique_ptr<TScheduleTreeFrame> TScheduleTree::MakeFrame()
{
    auto frame = std::make_unique<TScheduleTreeFrame>();
    Execute(*frame, Command);
    frame->expandAll();
    frame->setWindowTitle(QStringLiteral("[*]"));
    frame->resize(700, 700);
    frame->show();
    frame->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(frame.get()));
    frame->setFocus();
    return frame;
}

std::string TScheduleTree::NameOf(const TTreeNode* node)
{
    constexpr qsizetype TimeLength = 5;
    const QString& caption = node->Caption();
    const auto key = QStringLiteral(" time=\"");
    const qsizetype at = caption.startsWith(QStringLiteral("<schedule ")) ? caption.indexOf(key) : -1;
    return (at < 0 ? caption : caption.mid(at + key.size(), TimeLength)).toStdString();
}

TScheduleNode* TScheduleTree::NodeOf(const TScheduleTreeFrame& frame, const char* name)
{
    for (TTreeNode* node = frame.TopNode(); node; node = node->Next()) {
        if (NameOf(node) == name)
            return static_cast<TScheduleNode*>(node);
    }
    ADD_FAILURE() << "no node " << name;
    return nullptr;
}

std::string TScheduleTree::Below(const TScheduleNode* node)
{
    std::string names;
    for (int i = 0; node && i < node->Count(); ++i)
        names += (i > 0 ? "|" : "") + NameOf(node->Child(i));
    return names;
}

std::string TScheduleTree::Selected() const
{
    std::string names;
    const QList<TTreeNode*> nodes = m_frame->SelectedNodes();
    for (const TTreeNode* node : nodes)
        names += (names.empty() ? "" : "|") + NameOf(node);
    return names;
}

std::string TScheduleTree::Record(const TScheduleNode* node)
{
    const TVlNodeData* data = node ? node->Data() : nullptr;
    if (!data)
        return "none";
    return QStringLiteral("id=%1 name=%2 alias=%3 source=%4 type=%5 access=%6 enabled=%7 min=%8 max=%9")
        .arg(data->Id)
        .arg(data->Name, data->Alias)
        .arg(data->Source)
        .arg(data->DataType)
        .arg(data->Access)
        .arg(data->Enabled ? 1 : 0)
        .arg(data->MinVal, data->MaxVal)
        .toStdString();
}

std::string TScheduleTree::OutlineOf(const TScheduleTreeFrame& frame)
{
    std::string outline;
    for (const TTreeNode* node = frame.TopNode(); node; node = node->Next()) {
        const auto level = static_cast<std::size_t>(node->Level());
        outline += (outline.empty() ? "" : "\n") + std::string(2 * level, ' ') + NameOf(node);
    }
    return outline;
}

void TScheduleTree::Click(const char* name, Qt::KeyboardModifiers keys) const
{
    const QPoint place = m_frame->visualItemRect(Node(name)).center();
    QTest::mouseClick(m_frame->viewport(), Qt::LeftButton, keys, place);
}

void TScheduleTree::Select(const std::vector<const char*>& names) const
{
    m_frame->expandAll();
    m_frame->clearSelection();
    Qt::KeyboardModifiers keys = Qt::NoModifier;
    for (const char* name : names) {
        Click(name, keys);
        keys = Qt::ControlModifier;
    }
}

QLineEdit* TScheduleTree::OpenEditor(const char* name) const
{
    Select({name});
    PressKey(Qt::Key_F2);
    return m_frame->viewport()->findChild<QLineEdit*>();
}

void TScheduleTree::Rename(const char* name, const char* text) const
{
    QLineEdit* editor = OpenEditor(name);
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClicks(editor, QString::fromUtf8(text));
    QTest::keyClick(editor, Qt::Key_Return);
    // The view takes the text from its editor later, and then lets it go.
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

QAction* TScheduleTree::Action(const char* name) const
{
    auto* action = m_frame->findChild<QAction*>(QLatin1StringView(name));
    EXPECT_NE(action, nullptr) << name;
    return action;
}

void TScheduleTree::PressKey(Qt::Key key, Qt::KeyboardModifiers keys) const
{
    // A menu or the dialog may have been the active window; short cuts belong to the active one.
    QApplication::setActiveWindow(m_frame.get());
    m_frame->setFocus();
    QTest::keyClick(m_frame.get(), key, keys);
}

void TScheduleTree::CopyNodes(const std::vector<const char*>& names) const
{
    Select(names);
    PressCopy();
}

void TScheduleTree::CutNode(const char* name) const
{
    Select({name});
    PressCut();
}

void TScheduleTree::PasteOn(const char* name) const
{
    Select({name});
    PressPaste();
}

void TScheduleTree::OpenMenu(const char* name) const
{
    QWidget* viewport = m_frame->viewport();
    const QPoint beside(10, viewport->height() - 5);
    const QPoint place = name ? m_frame->visualItemRect(Node(name)).center() : beside;
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, viewport->mapToGlobal(place));
    QCoreApplication::sendEvent(viewport, &event);
}

void TScheduleTree::CloseMenu() const
{
    Menu()->hide();
    QCoreApplication::processEvents();
}

QMenu* TScheduleTree::Menu() const
{
    return qobject_cast<QMenu*>(Action("MenuAction_Export")->parent());
}

std::string TScheduleTree::EnabledEntries() const
{
    return Captions(Menu(), &QAction::isEnabled);
}

std::string TScheduleTree::VisibleEntries() const
{
    return Captions(Menu(), &QAction::isVisible);
}

std::string TScheduleTree::CheckedAccess() const
{
    return Captions(Action("SetGroupAccess")->menu<QMenu*>(), &QAction::isChecked);
}

TSchedulePropsDialog* TScheduleTree::DialogOf(const TScheduleTreeFrame& frame)
{
    return frame.findChild<TSchedulePropsDialog*>();
}

void TScheduleTree::ShowProperties(const char* name) const
{
    Select({name});
    Run("MenuAction_AttributesExecute");
    ASSERT_TRUE(m_frame->IsDialogConnected());
}

std::string TScheduleTree::ShownDatapoint() const
{
    const TSchedulePropsDialog& dialog = *Dialog();
    if (dialog.GetIsSchedule())
        return "an entry";
    return QStringLiteral("%1 %2 %3 [%4..%5] type=%6 source=%7 access=%8 enabled=%9")
        .arg(dialog.GetSection())
        .arg(dialog.GetItemName(), dialog.GetNodeAlias(), dialog.GetNodeMinVal(), dialog.GetNodeMaxVal())
        .arg(dialog.GetDataType())
        .arg(dialog.GetNodeSource())
        .arg(dialog.GetNodeAccess())
        .arg(dialog.GetEnableFlag() ? 1 : 0)
        .toStdString();
}

void TScheduleTree::Type(const char* field, const char* text) const
{
    auto* edit = Field<QLineEdit>(field);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    QTest::keyClicks(edit, QString::fromUtf8(text));
}

std::string TScheduleTree::FieldText(const char* field) const
{
    return Field<QLineEdit>(field)->text().toStdString();
}

void TScheduleTree::Press(const char* button) const
{
    QTest::mouseClick(Field<QAbstractButton>(button), Qt::LeftButton);
}

void TScheduleTree::Toggle(const char* box) const
{
    QTest::mouseClick(Field<QAbstractButton>(box), Qt::LeftButton, {}, QPoint(8, 8));
}

void TScheduleTree::Choose(const char* box, int index) const
{
    auto* list = Field<QComboBox>(box);
    list->setFocus();
    const int before = list->currentIndex();
    for (int i = before; i < index; ++i)
        QTest::keyClick(list, Qt::Key_Down);
    for (int i = before; i > index; --i)
        QTest::keyClick(list, Qt::Key_Up);
}

std::string TScheduleTree::Sections() const
{
    const auto* box = Field<QComboBox>("CBoxPartSelector");
    QStringList sections;
    for (int i = 0; i < box->count(); ++i)
        sections.append(box->itemText(i));
    return sections.join(u'|').toStdString();
}

QByteArray TScheduleTree::Exported() const
{
    return ReadAll(m_project.Schedule());
}
