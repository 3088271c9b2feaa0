#include "NewProjectDialog.h"
#include "TestSupport.h"

#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace
{

class NewProjectDialog : public ::testing::Test
{
protected:
    void Type(const char* field, const char* text)
    {
        auto* edit = m_dialog.findChild<QLineEdit*>(QString::fromLatin1(field));
        edit->clear();
        QTest::keyClicks(edit, QString::fromUtf8(text));
    }

    bool CanAccept() const
    {
        return m_dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled();
    }

    TNewProjectDialog m_dialog;
};

TEST_F(NewProjectDialog, DirectoryIsTheFolderAndTheName)
{
    Type("ProjectFolder", "/haus");
    Type("ProjectName", "  Muster  ");
    EXPECT_EQ(m_dialog.GetName(), QStringLiteral("Muster"));
    EXPECT_EQ(m_dialog.GetDirectory(), QStringLiteral("/haus/Muster"));
    EXPECT_TRUE(CanAccept());
}

TEST_F(NewProjectDialog, NothingIsMadeWithoutNameOrFolder)
{
    EXPECT_FALSE(CanAccept());
    Type("ProjectFolder", "/haus");
    Type("ProjectName", "   ");
    EXPECT_FALSE(CanAccept());
    Type("ProjectName", "Muster");
    EXPECT_TRUE(CanAccept());
    Type("ProjectFolder", "");
    EXPECT_FALSE(CanAccept());
}

TEST_F(NewProjectDialog, NamesThatAreNoDirectoryNamesAreRefused)
{
    Type("ProjectFolder", "/haus");
    for (const char* name : {"a/b", "a\\b", "..", ".versteckt"}) {
        Type("ProjectName", name);
        EXPECT_FALSE(CanAccept()) << name;
    }
}

} // namespace
