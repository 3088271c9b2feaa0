#include "Vlnavigation.h"

#include "Folderman.h"
#include "NestedLoop.h"
#include "TestSupport.h"
#include "Vlapputils.h"
#include "Vlerrors.h"

#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace
{

constexpr auto Sample = "# Von Hand\nCaption=Szenen & Co\nCommand=pane://scenes\nIcon=images/a.png\n";

class NavigationTest : public testing::Test
{
protected:
    ~NavigationTest() override { FolderManager().SetCommandEvent({}); }

    QString File(const char* name = "a.uri") const { return m_project.Path(QString::fromLatin1(name)); }

    TNavigationPtr Load(const QByteArray& text) const
    {
        WriteAll(File(), text);
        TNavigationPtr entry = TNavigation::Create(File(), QStringLiteral("Leiste"));
        entry->Load();
        return entry;
    }

    template <class TField> static TField* Field(const char* name)
    {
        auto* field = QApplication::activeModalWidget()->findChild<TField*>(QLatin1StringView(name));
        EXPECT_NE(field, nullptr) << name;
        return field;
    }
    static void Type(const char* name, const QString& text)
    {
        Field<QLineEdit>(name)->setFocus();
        Field<QLineEdit>(name)->selectAll();
        QTest::keyClicks(Field<QLineEdit>(name), text);
    }
    static void Press(const char* button) { QTest::mouseClick(Field<QPushButton>(button), Qt::LeftButton); }

    // Edits the properties of `entry` by `edit`; whether that was confirmed.
    static bool Edit(TNavigation& entry, const std::function<void()>& edit)
    {
        bool confirmed = false;
        EXPECT_TRUE(RunInLoop([&] { confirmed = entry.EditProperties(); }, edit));
        return confirmed;
    }

    TTemporaryProject m_project;
    TRecordedMessages m_messages;
};

} // namespace

TEST_F(NavigationTest, ShowsWhatItsFileSays)
{
    const TNavigationPtr entry = Load(Sample);
    EXPECT_EQ(entry->GetCaption(), QStringLiteral("Szenen & Co"));
    EXPECT_EQ(entry->text(), QStringLiteral("Szenen && Co"));
    EXPECT_TRUE(entry->toolTip().contains(QStringLiteral("pane://scenes")));
    EXPECT_EQ(entry->GetIconFile(), ToPackagePath(File("images/a.png")));
    EXPECT_TRUE(entry->IsRemovable());
    EXPECT_FALSE(entry->IsNew());
}

TEST_F(NavigationTest, NameOfTheFileStandsForAMissingCaption)
{
    EXPECT_EQ(Load("Command=pane://scenes")->GetCaption(), QStringLiteral("a"));
}

TEST_F(NavigationTest, OwnCategoryGoesBeforeTheGivenOne)
{
    EXPECT_EQ(Load("Command=pane://x")->GetCategory(), QStringLiteral("Leiste"));
    EXPECT_EQ(Load("Command=pane://x\nCategory=Eigene")->GetCategory(), QStringLiteral("Eigene"));
}

TEST_F(NavigationTest, DamagedFileIsNamedWithTheReason)
{
    EXPECT_EQ(
        ([&] {
            try {
                Load("Unsinn");
            } catch (const TUserError& error) {
                return error.Message();
            }
            return QString();
        })(),
        QStringLiteral("Der Eintrag \"%1\" ist beschädigt: In Zeile 1 fehlt das Gleichheitszeichen.").arg(File()));
    EXPECT_THROW(TNavigation::Create(File("fehlt.uri"), {})->Load(), TFileError);
    EXPECT_THROW(TNavigation::Create(m_project.Root(), {})->Load(), TFileError);
}

TEST_F(NavigationTest, SavingKeepsWhatOthersHaveWritten)
{
    const TNavigationPtr entry = Load(Sample);
    TEntryRecord record = entry->GetRecord();
    record.Caption = QStringLiteral("Neu");
    entry->SetRecord(record);
    entry->Save();
    EXPECT_EQ(ReadAll(File()), "# Von Hand\nCaption=Neu\nCommand=pane://scenes\nIcon=images/a.png\nRemovable=yes\n");
}

TEST_F(NavigationTest, NothingIsWrittenBelowAFileOrWithoutAFolder)
{
    m_project.Write(QStringLiteral("__CmdButtons.def"), "[CMDBUTTONS]\n");
    const TEntryRecord record{.Target = QStringLiteral("pane://x")};
    for (const QString& file : {File("__CmdButtons.def/neu.uri"), File("fehlt/neu.uri"), QStringLiteral("neu.uri")}) {
        const TNavigationPtr entry = TNavigation::Create(file, {});
        entry->SetRecord(record);
        EXPECT_THROW(entry->Save(), TFileError) << file.toStdString();
        EXPECT_FALSE(QFile::exists(file));
    }
    EXPECT_EQ(m_project.Read(QStringLiteral("__CmdButtons.def")), "[CMDBUTTONS]\n");
}

TEST_F(NavigationTest, RecordThatNobodyCouldReadAgainIsNotWritten)
{
    const TNavigationPtr entry = Load(Sample);
    TEntryRecord record = entry->GetRecord();
    record.Target.clear();
    entry->SetRecord(record);
    EXPECT_THROW(entry->Save(), TFileError);
    EXPECT_EQ(ReadAll(File()), Sample);
}

TEST_F(NavigationTest, IsInTheListOfActionsUntilItIsDetachedOrFreed)
{
    TNavigationPtr entry = Load(Sample);
    EXPECT_TRUE(FolderManager().Entries().contains(entry.get()));
    entry->Detach();
    EXPECT_FALSE(FolderManager().Entries().contains(entry.get()));
    entry.reset();
    entry = Load(Sample);
    const TNavigation* freed = entry.get();
    entry.reset();
    EXPECT_FALSE(FolderManager().Entries().contains(freed));
}

TEST_F(NavigationTest, TriggeringRunsItAndAFailureIsShown)
{
    QStringList commands;
    FolderManager().SetCommandEvent([&](const QString& command) { commands.append(command); });
    const TNavigationPtr entry = Load(Sample);
    entry->trigger();
    EXPECT_EQ(commands, QStringList{QStringLiteral("pane://scenes")});
    FolderManager().SetCommandEvent({});
    entry->trigger();
    EXPECT_EQ(m_messages.Errors.size(), 1);
}

TEST_F(NavigationTest, LivesUntilItsExecutionReturnsWhenThatFreesIt)
{
    TNavigationPtr entry = Load(Sample);
    const QPointer<TNavigation> watch = entry.get();
    bool livedInside = false;
    FolderManager().SetCommandEvent([&](const QString&) {
        entry.reset();
        livedInside = watch && watch->IsInUse() && watch->GetCaption() == QStringLiteral("Szenen & Co");
    });
    watch->trigger();
    EXPECT_TRUE(livedInside);
    EXPECT_FALSE(watch);
}

TEST_F(NavigationTest, LivesUntilTheOutermostOfSeveralExecutionsReturns)
{
    TNavigationPtr entry = Load(Sample);
    const QPointer<TNavigation> watch = entry.get();
    int depth = 0;
    FolderManager().SetCommandEvent([&](const QString&) {
        if (++depth == 1) {
            watch->trigger();
            EXPECT_TRUE(watch);
        } else {
            entry.reset();
        }
    });
    watch->trigger();
    EXPECT_EQ(depth, 2);
    EXPECT_FALSE(watch);
}

TEST_F(NavigationTest, StandsForAnActionOfTheHost)
{
    QAction action(QStringLiteral("Im &Browser && mehr"));
    int runs = 0;
    QObject::connect(&action, &QAction::triggered, &action, [&] { ++runs; });
    const TNavigationPtr entry = TNavigation::CreateFor(&action, QStringLiteral("Leiste"));
    EXPECT_EQ(entry->GetCaption(), QStringLiteral("Im Browser & mehr"));
    EXPECT_FALSE(entry->IsRemovable());
    entry->trigger();
    EXPECT_EQ(runs, 1);
    action.setEnabled(false);
    entry->trigger();
    EXPECT_EQ(runs, 1);
    EXPECT_EQ(m_messages.Errors.size(), 1);
    EXPECT_FALSE(entry->EditProperties());
    EXPECT_EQ(m_messages.Informations.size(), 1);
}

TEST_F(NavigationTest, ActionOfTheHostThatHasGoneIsRefused)
{
    auto action = std::make_unique<QAction>(QStringLiteral("A"));
    const TNavigationPtr entry = TNavigation::CreateFor(action.get(), {});
    action.reset();
    entry->trigger();
    EXPECT_EQ(m_messages.Errors.size(), 1);
}

TEST_F(NavigationTest, ConfirmedPropertiesAreWrittenAndReported)
{
    const TNavigationPtr entry = Load(Sample);
    QList<QObject*> changed;
    entry->SetChangeEvent([&](QObject* sender) { changed.append(sender); });
    EXPECT_TRUE(Edit(*entry, [] {
        Type("EditCaption", QStringLiteral("Zentrale"));
        Type("EditIcon", {});
        Field<QLineEdit>("EditIcon")->clear();
        Press("BtnOK");
    }));
    EXPECT_EQ(entry->GetCaption(), QStringLiteral("Zentrale"));
    EXPECT_EQ(changed, QList<QObject*>{entry.get()});
    EXPECT_EQ(ReadAll(File()), "# Von Hand\nCaption=Zentrale\nCommand=pane://scenes\nRemovable=yes\n");
}

TEST_F(NavigationTest, CancelledPropertiesChangeNothing)
{
    const TNavigationPtr entry = Load(Sample);
    bool changed = false;
    entry->SetChangeEvent([&](QObject*) { changed = true; });
    EXPECT_FALSE(Edit(*entry, [] {
        Type("EditCaption", QStringLiteral("Zentrale"));
        Press("BtnCancel");
    }));
    EXPECT_FALSE(changed);
    EXPECT_EQ(entry->GetCaption(), QStringLiteral("Szenen & Co"));
    EXPECT_EQ(ReadAll(File()), Sample);
}

TEST_F(NavigationTest, FailedSaveIsSaidAndTheDialogKeepsWhatWasTyped)
{
    const TNavigationPtr entry = TNavigation::Create(File("fehlt/neu.uri"), {});
    entry->SetNew(true);
    EXPECT_FALSE(Edit(*entry, [this] {
        Type("EditCaption", QStringLiteral("Zentrale"));
        Type("EditTarget", QStringLiteral("pane://scenes"));
        Press("BtnOK");
        EXPECT_EQ(m_messages.Errors.size(), 1);
        EXPECT_TRUE(QApplication::activeModalWidget()->isVisible());
        EXPECT_EQ(Field<QLineEdit>("EditCaption")->text(), QStringLiteral("Zentrale"));
        Press("BtnCancel");
    }));
    EXPECT_TRUE(m_messages.Errors.value(0).contains(QStringLiteral("neu.uri")));
    EXPECT_TRUE(entry->IsNew());
    EXPECT_TRUE(entry->GetRecord().Target.isEmpty());
}

TEST_F(NavigationTest, SavedEntryIsNoLongerNew)
{
    const TNavigationPtr entry = TNavigation::Create(File("neu.uri"), {});
    entry->SetNew(true);
    EXPECT_TRUE(Edit(*entry, [] {
        Type("EditCaption", QStringLiteral("Zentrale"));
        Type("EditTarget", QStringLiteral("pane://scenes"));
        Press("BtnOK");
    }));
    EXPECT_FALSE(entry->IsNew());
    EXPECT_TRUE(QFile::exists(File("neu.uri")));
}

TEST_F(NavigationTest, OpenDialogOutlivesItsOwnerAndStillSaves)
{
    TNavigationPtr entry = Load(Sample);
    const QPointer<TNavigation> watch = entry.get();
    bool reported = false;
    entry->SetChangeEvent([&](QObject*) { reported = true; });
    EXPECT_TRUE(Edit(*watch, [&] {
        entry.reset();
        EXPECT_TRUE(watch);
        Field<QLineEdit>("EditIcon")->clear();
        Type("EditCaption", QStringLiteral("Zentrale"));
        Press("BtnOK");
    }));
    EXPECT_FALSE(watch);
    EXPECT_FALSE(reported);
    EXPECT_TRUE(ReadAll(File()).contains("Caption=Zentrale"));
}

TEST_F(NavigationTest, WindowThatGoesTakesTheDialogAlong)
{
    const TNavigationPtr entry = Load(Sample);
    auto window = std::make_unique<QWidget>();
    window->show();
    QApplication::setActiveWindow(window.get());
    EXPECT_FALSE(Edit(*entry, [&] { window.reset(); }));
    EXPECT_EQ(ReadAll(File()), Sample);
}
