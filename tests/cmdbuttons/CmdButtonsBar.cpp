#include "CmdButtonsBar.h"

#include <QContextMenuEvent>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

TBarTest::TBarTest() : m_bar(std::make_unique<TICmdButtons>(&m_window))
{
    QDir().mkpath(m_project.Path(QStringLiteral("_buttons")));
    TProject::Create(OtherRoot(), QStringLiteral("anderes"));
    QDir().mkpath(OtherRoot() + QStringLiteral("/_buttons"));
    WriteAll(OtherRoot() + QStringLiteral("/_buttons/anderes.uri"), "Command=pane://x");
    FolderManager().SetCommandEvent([this](const QString& command) { m_commands.append(command); });
    m_window.setLayout(new QVBoxLayout);
    m_window.layout()->addWidget(m_bar.get());
    m_window.resize(240, 600);
    m_window.show();
    QApplication::setActiveWindow(&m_window);
}

TBarTest::~TBarTest()
{
    m_bar.reset();
    FolderManager().SetCommandEvent({});
    Settle();
    EXPECT_TRUE(FolderManager().Entries().isEmpty());
    EXPECT_FALSE(FolderManager().GetNewItemEvent());
}

void TBarTest::WriteEntry(const QString& name, const QByteArray& text) const
{
    const QByteArray command = "Command=pane://" + name.toUtf8() + "\n";
    m_project.Write(QStringLiteral("_buttons/%1.uri").arg(name), text.isNull() ? command : text);
}

void TBarTest::WriteEntries(const QStringList& names) const
{
    for (const QString& name : names)
        WriteEntry(name);
}

void TBarTest::WriteDefinition(const QByteArray& names) const
{
    m_project.Write(QStringLiteral("_buttons/__CmdButtons.def"), "[CMDBUTTONS]\r\n" + names);
}

bool TBarTest::Execute(const char* command)
{
    bool handled = false;
    Bar().ExecuteCmd(command, handled);
    QApplication::processEvents();
    return handled;
}

QStringList TBarTest::Captions()
{
    QStringList captions;
    for (const TCmdButton* button : Bar().Buttons())
        captions.append(button->Action()->GetCaption());
    return captions;
}

TCmdButton* TBarTest::Button(const QString& caption)
{
    for (TCmdButton* button : Bar().Buttons()) {
        if (button->Action()->GetCaption() == caption)
            return button;
    }
    throw std::runtime_error("no button " + caption.toStdString());
}

void TBarTest::Click(const QString& caption)
{
    QTest::mouseClick(Button(caption), Qt::LeftButton);
}

void TBarTest::OpenPopup(const QString& caption)
{
    QWidget* widget = caption.isEmpty() ? Bar().viewport() : Button(caption);
    const QPoint place = caption.isEmpty() ? QPoint(5, widget->height() - 5) : widget->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, widget->mapToGlobal(place));
    QApplication::sendEvent(caption.isEmpty() ? widget : Bar().widget()->childAt(widget->mapTo(Bar().widget(), place)),
                            &event);
    ASSERT_TRUE(Bar().PopupMenu()->isVisible());
}

QStringList TBarTest::VisibleEntries()
{
    QStringList entries;
    for (const QAction* action : Bar().PopupMenu()->actions()) {
        if (action->isVisible() && !action->isSeparator())
            entries.append(action->text());
    }
    return entries;
}

void TBarTest::Choose(const QString& entry)
{
    QMenu* menu = Bar().PopupMenu();
    for (QAction* action : menu->actions()) {
        if (action->text() != entry)
            continue;
        ASSERT_TRUE(action->isVisible()) << entry.toStdString();
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
        return;
    }
    FAIL() << entry.toStdString();
}

void TBarTest::Type(const char* name, const QString& text)
{
    Field<QLineEdit>(name)->clear();
    QTest::keyClicks(Field<QLineEdit>(name), text);
}

void TBarTest::Press(const char* button)
{
    QTest::mouseClick(Field<QPushButton>(button), Qt::LeftButton);
}

void TBarTest::Confirm(const QString& caption)
{
    Type("EditCaption", caption);
    Type("EditTarget", QStringLiteral("pane://neu"));
    Press("BtnOK");
}

void TBarTest::Settle()
{
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QApplication::processEvents();
}
