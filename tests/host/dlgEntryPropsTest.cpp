#include "dlgEntryProps.h"

#include "NestedLoop.h"
#include "TestSupport.h"
#include "Userman.h"
#include "Vlerrors.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <utility>

namespace
{

class EntryDialog : public testing::Test
{
protected:
    EntryDialog()
    {
        m_dialog.SetAcceptEvent([this](const TEntryRecord& record) { m_accepted.append(record); });
        m_dialog.SetFile(m_project.Path(QStringLiteral("a.uri")), true);
        m_dialog.SetRecord({}, QStringLiteral("Leiste"));
        m_dialog.show();
    }

    template <class TField> TField* Field(const char* name)
    {
        auto* field = m_dialog.findChild<TField*>(QLatin1StringView(name));
        EXPECT_NE(field, nullptr) << name;
        return field;
    }
    void Type(const char* name, const QString& text)
    {
        Field<QLineEdit>(name)->clear();
        QTest::keyClicks(Field<QLineEdit>(name), text);
    }
    void Choose(TEntryKind kind) { Field<QComboBox>("ComboKind")->setCurrentIndex(static_cast<int>(kind)); }
    void Press(const char* button) { QTest::mouseClick(Field<QPushButton>(button), Qt::LeftButton); }

    // Presses OK; the field that the refusal leads to, or "closed".
    QString RefusedField()
    {
        Press("BtnOK");
        if (!m_dialog.isVisible())
            return QStringLiteral("closed");
        EXPECT_FALSE(Field<QLabel>("LabelError")->text().isEmpty());
        EXPECT_TRUE(Field<QLabel>("LabelError")->isVisible());
        return m_dialog.focusWidget()->objectName();
    }
    QString MakePicture()
    {
        QImage image(16, 16, QImage::Format_ARGB32);
        image.fill(Qt::red);
        EXPECT_TRUE(image.save(m_project.Path(QStringLiteral("a.png"))));
        return QStringLiteral("%PRJPATH%/a.png");
    }

    void OpenOther() const
    {
        TProject::Create(m_other.filePath(QStringLiteral("other")), QStringLiteral("other"));
        UserManager()->OpenProject(m_other.filePath(QStringLiteral("other")));
    }

    TTemporaryProject m_project;
    QTemporaryDir m_other;
    TRecordedMessages m_messages;
    QList<TEntryRecord> m_accepted;
    TEntryPropsDialog m_dialog{nullptr};
};

} // namespace

TEST_F(EntryDialog, WhatWasTypedIsAccepted)
{
    Type("EditCaption", QStringLiteral(" Übersicht "));
    Choose(TEntryKind::File);
    Type("EditTarget", QStringLiteral("%PRJPATH%/_menu/menu.html"));
    Type("EditCategory", QStringLiteral("Eigene"));
    Type("EditIcon", MakePicture());
    Field<QCheckBox>("CheckRemovable")->setChecked(false);
    EXPECT_EQ(RefusedField(), QStringLiteral("closed"));
    EXPECT_EQ(m_accepted, QList<TEntryRecord>{(TEntryRecord{.Caption = QStringLiteral("Übersicht"),
                                                            .Kind = TEntryKind::File,
                                                            .Target = QStringLiteral("%PRJPATH%/_menu/menu.html"),
                                                            .Category = QStringLiteral("Eigene"),
                                                            .Icon = QStringLiteral("%PRJPATH%/a.png"),
                                                            .Removable = false})});
}

TEST_F(EntryDialog, ShowsTheRecordAndGivesItBackUnchanged)
{
    const TEntryRecord record{.Caption = QStringLiteral("Netz"),
                              .Kind = TEntryKind::Address,
                              .Target = QStringLiteral("https://www.example.org/"),
                              .Category = QStringLiteral("Eigene"),
                              .Icon = QStringLiteral("fehlt.png"),
                              .Removable = false};
    m_dialog.SetRecord(record, {});
    EXPECT_EQ(m_dialog.GetRecord(), record);
}

TEST_F(EntryDialog, TitleAndFileSayWhatIsEdited)
{
    EXPECT_EQ(m_dialog.windowTitle(), QStringLiteral("Neue Aktion"));
    m_dialog.SetFile(QStringLiteral("\\tmp\\b.uri"), false);
    EXPECT_EQ(m_dialog.windowTitle(), QStringLiteral("Eigenschaften der Aktion"));
    EXPECT_EQ(Field<QLabel>("LabelFile")->text(), QStringLiteral("/tmp/b.uri"));
    EXPECT_EQ(Field<QLineEdit>("EditCategory")->placeholderText(), QStringLiteral("Leiste"));
}

TEST_F(EntryDialog, WhatIsMissingOrWrongIsSaidAndNothingIsLost)
{
    EXPECT_EQ(RefusedField(), QStringLiteral("EditCaption"));
    Type("EditCaption", QStringLiteral("A"));
    EXPECT_EQ(RefusedField(), QStringLiteral("EditTarget"));
    Type("EditTarget", QStringLiteral("scenes"));
    EXPECT_EQ(RefusedField(), QStringLiteral("EditTarget"));
    Type("EditTarget", QStringLiteral("pane://scenes"));
    Type("EditIcon", QStringLiteral("fehlt.png"));
    EXPECT_EQ(RefusedField(), QStringLiteral("EditIcon"));
    EXPECT_EQ(Field<QLineEdit>("EditTarget")->text(), QStringLiteral("pane://scenes"));
    EXPECT_TRUE(m_accepted.isEmpty());
    Type("EditIcon", {});
    EXPECT_EQ(RefusedField(), QStringLiteral("closed"));
    EXPECT_EQ(m_accepted.size(), 1);
}

TEST_F(EntryDialog, FilesAndAddressesAreChecked)
{
    Type("EditCaption", QStringLiteral("A"));
    Choose(TEntryKind::File);
    EXPECT_EQ(RefusedField(), QStringLiteral("EditTarget"));
    Type("EditTarget", QStringLiteral("_buttons/b.uri"));
    EXPECT_EQ(RefusedField(), QStringLiteral("EditTarget"));
    Choose(TEntryKind::Address);
    Type("EditTarget", QStringLiteral("www.example.org"));
    EXPECT_EQ(RefusedField(), QStringLiteral("EditTarget"));
    Type("EditTarget", QStringLiteral("https://www.example.org/"));
    EXPECT_EQ(RefusedField(), QStringLiteral("closed"));
}

TEST_F(EntryDialog, IconThatIsNoPictureIsRefused)
{
    m_project.Write(QStringLiteral("a.png"), "Das ist kein Bild.");
    Type("EditCaption", QStringLiteral("A"));
    Type("EditTarget", QStringLiteral("pane://scenes"));
    Type("EditIcon", QStringLiteral("a.png"));
    EXPECT_FALSE(Field<QLabel>("Preview")->isVisible());
    EXPECT_EQ(RefusedField(), QStringLiteral("EditIcon"));
}

TEST_F(EntryDialog, IconThatWasThereBeforeIsNotRefused)
{
    m_dialog.SetRecord({.Caption = QStringLiteral("A"),
                        .Target = QStringLiteral("pane://scenes"),
                        .Icon = QStringLiteral("fehlt.png")},
                       {});
    Type("EditCaption", QStringLiteral("B"));
    Type("EditIcon", QStringLiteral("fehlt auch.png"));
    EXPECT_EQ(RefusedField(), QStringLiteral("EditIcon"));
    Type("EditIcon", QStringLiteral("fehlt.png"));
    EXPECT_EQ(RefusedField(), QStringLiteral("closed"));
    ASSERT_EQ(m_accepted.size(), 1);
    EXPECT_EQ(m_accepted.first().Icon, QStringLiteral("fehlt.png"));
}

TEST_F(EntryDialog, PathsAreThoseOfTheProjectThatWasOpenAtFirst)
{
    MakePicture();
    OpenOther();
    Type("EditCaption", QStringLiteral("A"));
    Type("EditTarget", QStringLiteral("pane://scenes"));
    for (const char* icon : {"%PRJPATH%/a.png", "a.png"}) {
        Type("EditIcon", QString::fromLatin1(icon));
        EXPECT_TRUE(Field<QLabel>("Preview")->isVisible()) << icon;
    }
    EXPECT_EQ(RefusedField(), QStringLiteral("closed"));
}

TEST_F(EntryDialog, DroppedFileIsWrittenForTheProjectThatWasOpenAtFirst)
{
    MakePicture();
    OpenOther();
    for (const char* field : {"EditIcon", "EditTarget"}) {
        QMimeData file;
        file.setUrls({QUrl::fromLocalFile(m_project.Path(QStringLiteral("a.png")))});
        EXPECT_TRUE(TDraggedOver(Field<QLineEdit>(field), &file).EnterAndDrop(QPoint(5, 5)));
        EXPECT_EQ(Field<QLineEdit>(field)->text(), QStringLiteral("%PRJPATH%/a.png"));
    }
}

TEST_F(EntryDialog, FileIsChosenInTheProjectThatWasOpenAtFirst)
{
    MakePicture();
    OpenOther();
    Choose(TEntryKind::File);
    for (const auto& [button, field] : {std::pair{"BtnIcon", "EditIcon"}, std::pair{"BtnTarget", "EditTarget"}}) {
        EXPECT_TRUE(RunInLoop([&, name = button] { Press(name); },
                              [this] {
                                  auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
                                  ASSERT_NE(dialog, nullptr);
                                  EXPECT_EQ(dialog->directory().path(), m_project.Root());
                                  dialog->selectFile(m_project.Path(QStringLiteral("a.png")));
                                  static_cast<QDialog*>(dialog)->accept();
                              }));
        EXPECT_EQ(Field<QLineEdit>(field)->text(), QStringLiteral("%PRJPATH%/a.png"));
    }
}

TEST_F(EntryDialog, IconIsShownAsSoonAsItIsNamed)
{
    EXPECT_FALSE(Field<QLabel>("Preview")->isVisible());
    Type("EditIcon", MakePicture());
    EXPECT_TRUE(Field<QLabel>("Preview")->isVisible());
    EXPECT_FALSE(Field<QLabel>("Preview")->pixmap().isNull());
}

TEST_F(EntryDialog, FailureToTakeItOverIsShownAndTheDialogStays)
{
    m_dialog.SetAcceptEvent([](const TEntryRecord&) { throw TFileError(QStringLiteral("Die Platte ist voll.")); });
    Type("EditCaption", QStringLiteral("A"));
    Type("EditTarget", QStringLiteral("pane://scenes"));
    Press("BtnOK");
    EXPECT_TRUE(m_dialog.isVisible());
    EXPECT_EQ(m_messages.Errors, QStringList{QStringLiteral("Die Platte ist voll.")});
    EXPECT_EQ(Field<QLineEdit>("EditCaption")->text(), QStringLiteral("A"));
}

TEST_F(EntryDialog, EveryFieldIsReachedByTheKeyboardAndHasAName)
{
    QStringList order;
    Field<QLineEdit>("EditCaption")->setFocus();
    for (int i = 0; i < 20; ++i) {
        const QWidget* field = m_dialog.focusWidget();
        if (order.contains(field->objectName()))
            break;
        order.append(field->objectName());
        const auto* button = qobject_cast<const QPushButton*>(field);
        EXPECT_FALSE(field->accessibleName().isEmpty() && (!button || button->text().isEmpty()))
            << field->objectName().toStdString();
        QTest::keyClick(&m_dialog, Qt::Key_Tab);
    }
    EXPECT_EQ(order,
              QStringList({QStringLiteral("EditCaption"), QStringLiteral("ComboKind"), QStringLiteral("EditTarget"),
                           QStringLiteral("EditCategory"), QStringLiteral("EditIcon"), QStringLiteral("BtnIcon"),
                           QStringLiteral("CheckRemovable"), QStringLiteral("BtnOK"), QStringLiteral("BtnCancel")}));
}

TEST_F(EntryDialog, EscapeLeavesWithoutAcceptingAndEnterAccepts)
{
    Type("EditCaption", QStringLiteral("A"));
    Type("EditTarget", QStringLiteral("pane://scenes"));
    QTest::keyClick(&m_dialog, Qt::Key_Escape);
    EXPECT_FALSE(m_dialog.isVisible());
    EXPECT_TRUE(m_accepted.isEmpty());
    m_dialog.show();
    QTest::keyClick(Field<QLineEdit>("EditCaption"), Qt::Key_Return);
    EXPECT_EQ(m_accepted.size(), 1);
}

TEST_F(EntryDialog, KindNamesItsTarget)
{
    EXPECT_EQ(Field<QLineEdit>("EditTarget")->accessibleName(), QStringLiteral("Befehlstext"));
    EXPECT_FALSE(Field<QPushButton>("BtnTarget")->isVisible());
    Choose(TEntryKind::File);
    EXPECT_EQ(Field<QLineEdit>("EditTarget")->accessibleName(), QStringLiteral("Datei"));
    EXPECT_TRUE(Field<QPushButton>("BtnTarget")->isVisible());
    Choose(TEntryKind::Address);
    EXPECT_EQ(Field<QLineEdit>("EditTarget")->accessibleName(), QStringLiteral("Adresse"));
}
