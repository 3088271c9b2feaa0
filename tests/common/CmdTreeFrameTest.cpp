#include "CmdTreeFrame.h"

#include "TestSupport.h"
#include "Vlerrors.h"

#include <QApplication>
#include <QPointer>
#include <gtest/gtest.h>

#include <memory>

namespace
{

// An editor that notes what it is asked.
class TProbeFrame final : public TCmdTreeFrame
{
public:
    TProbeFrame() : TCmdTreeFrame(nullptr) {}

    QStringList Steps;
    QString Path;
    int Reloads = 0;
    int Updates = 0;
    bool Fails = false;

    void UpdateActions() override { ++Updates; }

    static QString Decode(const char* path) { return DecodePath(QString::fromLatin1(path)); }
    static QString Expand(const char* path) { return ExpandPath(QString::fromLatin1(path)); }

protected:
    void BeginCommand(const QString&) override { Steps.append(QStringLiteral("begin")); }
    void ApplyCommandItem(const QString& key, const QString& value) override
    {
        if (Fails)
            throw TUserError(QStringLiteral("Das ging nicht."));
        Steps.append(key + u'=' + value);
    }
    void FinishCommand() override
    {
        Steps.append(QStringLiteral("finish"));
        SetProjectListener(Path);
    }
    bool IsFixed(const TTreeNode*) const override { return false; }
    void ReloadForProject() override
    {
        ++Reloads;
        if (Fails)
            throw TUserError(QStringLiteral("Das ging nicht."));
    }
};

// The slots of a command target as a host written in another language sees them.
struct TSlots
{
    bool (*QueryInterface)(ICmdTarget*, const TGuid&, void**);
    int (*AddRef)(ICmdTarget*);
    int (*Release)(ICmdTarget*);
    void (*RequestData)(ICmdTarget*, const QVariant&, QVariant&);
    void (*ExecuteCmd)(ICmdTarget*, const char*, bool&);
    void (*QueryCmd)(ICmdTarget*, const char*, bool&);
};

// What a command target answered to a call of each of its slots.
struct TAnswers
{
    bool Known = false;
    void* Found = nullptr;
    int AfterAddRef = -1;
    int AfterRelease = -1;
    QVariant Data = QVariant(5);
    bool Handled = false;
    bool Accepted = false;
};

// The calls go past the types of C++ on purpose.
#ifdef __clang__
[[clang::no_sanitize("function")]] TAnswers CallEachSlot(ICmdTarget* target, const char* command);
#endif

TAnswers CallEachSlot(ICmdTarget* target, const char* command)
{
    const TSlots& slotsOfTarget = **reinterpret_cast<const TSlots* const*>(target);
    TAnswers answers;
    answers.Known = slotsOfTarget.QueryInterface(target, IID_ICmdTarget, &answers.Found);
    answers.AfterAddRef = slotsOfTarget.AddRef(target);
    answers.AfterRelease = slotsOfTarget.Release(target);
    slotsOfTarget.RequestData(target, QVariant(1), answers.Data);
    slotsOfTarget.ExecuteCmd(target, command, answers.Handled);
    slotsOfTarget.QueryCmd(target, command, answers.Accepted);
    return answers;
}

class CmdTreeFrame : public testing::Test
{
protected:
    ICmdTarget* Target() const { return qobject_cast<ICmdTarget*>(m_frame.get()); }
    bool Execute(const char* command) const
    {
        bool handled = false;
        Target()->ExecuteCmd(command, handled);
        return handled;
    }
    QColor Color(QPalette::ColorRole role) const { return m_frame->palette().color(role); }
    static QColor Default(QPalette::ColorRole role) { return QApplication::palette().color(role); }

    TRecordedMessages m_messages;
    std::unique_ptr<TProbeFrame> m_frame = std::make_unique<TProbeFrame>();
};

// The same while a project is open.
class CmdTreeFrameInProject : public CmdTreeFrame
{
protected:
    // Binds the frame to what depends on the project.
    void Bind(const char* path = "%PRJPATH%\\x.xml")
    {
        m_frame->Path = QString::fromLatin1(path);
        Execute("");
    }
    void OpenAgain() const { UserManager()->OpenProject(m_project.Root()); }

    TTemporaryProject m_project;
};

const auto Red = QColor(255, 0, 0);
const auto Green = QColor(0, 255, 0);

} // namespace

TEST_F(CmdTreeFrame, HasTheSlotsOfACommandTargetInTheirOrder)
{
    const TAnswers answers = CallEachSlot(Target(), "x://?a=1");
    EXPECT_TRUE(answers.Known);
    EXPECT_EQ(answers.Found, Target());
    EXPECT_EQ(answers.AfterAddRef, 1);
    EXPECT_EQ(answers.AfterRelease, 0);
    EXPECT_TRUE(answers.Data.isNull());
    EXPECT_TRUE(answers.Handled);
    EXPECT_TRUE(answers.Accepted);
    EXPECT_EQ(m_frame->Steps, QStringList({QStringLiteral("begin"), QStringLiteral("a=1"), QStringLiteral("finish")}));
}

TEST_F(CmdTreeFrame, UpdatesItsActionsByName)
{
    EXPECT_TRUE(QMetaObject::invokeMethod(m_frame.get(), "UpdateActions"));
    EXPECT_EQ(m_frame->Updates, 1);
}

TEST_F(CmdTreeFrame, HasTheIdentifierOfACommandTarget)
{
    EXPECT_EQ(IID_ICmdTarget, (TGuid{0x6DAD84E1, 0xE88F, 0x11D4, {0xB4, 0x6B, 0, 0, 0, 0, 0, 0}}));
}

TEST_F(CmdTreeFrame, GivesTheInterfacesThatItHas)
{
    void* found = nullptr;
    EXPECT_TRUE(Target()->QueryInterface(IID_IInterface, &found));
    EXPECT_EQ(found, Target());
    EXPECT_TRUE(Target()->QueryInterface(IID_ICmdTarget, &found));
    EXPECT_EQ(static_cast<ICmdTarget*>(found), Target());
}

TEST_F(CmdTreeFrame, ClearsTheResultForAnUnknownInterface)
{
    void* found = this;
    EXPECT_FALSE(Target()->QueryInterface(TGuid{1, 2, 3, {}}, &found));
    EXPECT_EQ(found, nullptr);
}

TEST_F(CmdTreeFrame, IsNeverDeletedByItsReferenceCount)
{
    const QPointer<TProbeFrame> alive = m_frame.get();
    EXPECT_EQ(Target()->AddRef(), 1);
    EXPECT_EQ(Target()->AddRef(), 2);
    for (int i = 0; i < 5; ++i)
        Target()->Release();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(alive.isNull());
}

TEST_F(CmdTreeFrame, AcceptsEveryCommand)
{
    for (const char* command : {"", "x", "Velmora.CmdButtons.1://", static_cast<const char*>(nullptr)}) {
        bool accepted = false;
        Target()->QueryCmd(command, accepted);
        EXPECT_TRUE(accepted);
    }
    EXPECT_TRUE(m_frame->Steps.isEmpty());
}

TEST_F(CmdTreeFrame, AnswersRequestsWithTheNullVariant)
{
    QVariant out(QStringLiteral("x"));
    Target()->RequestData(QVariant(QStringLiteral("y")), out);
    EXPECT_TRUE(out.isNull());
    EXPECT_FALSE(out.isValid());
}

TEST_F(CmdTreeFrame, TakesTheStepsOfACommandInTheirOrder)
{
    EXPECT_TRUE(Execute("Velmora.X.1://path?Other=1&scenes=2"));
    EXPECT_EQ(m_frame->Steps, QStringList({QStringLiteral("begin"), QStringLiteral("Other=1"),
                                           QStringLiteral("scenes=2"), QStringLiteral("finish")}));
}

TEST_F(CmdTreeFrame, TakesTheStepsOfACommandWithoutAQuery)
{
    const QStringList steps{QStringLiteral("begin"), QStringLiteral("finish")};
    for (const char* command : {"Velmora.X.1://path", "", "x", static_cast<const char*>(nullptr)}) {
        m_frame->Steps.clear();
        EXPECT_TRUE(Execute(command));
        EXPECT_EQ(m_frame->Steps, steps);
    }
}

TEST_F(CmdTreeFrame, TakesTheFirstValueOfADoubledKeyTwice)
{
    Execute("x://?a=1&A=2&color=255&color=65280");
    EXPECT_EQ(m_frame->Steps, QStringList({QStringLiteral("begin"), QStringLiteral("a=1"), QStringLiteral("A=1"),
                                           QStringLiteral("finish")}));
    EXPECT_EQ(Color(QPalette::Text), Red);
}

TEST_F(CmdTreeFrame, TakesCommandsInUtf8AndInTheCodePage)
{
    Execute("x://?a=K\xC3\xBC"
            "che");
    EXPECT_TRUE(m_frame->Steps.contains(QStringLiteral("a=Küche")));
    m_frame->Steps.clear();
    Execute("x://?a=K\xFC"
            "che");
    EXPECT_TRUE(m_frame->Steps.contains(QStringLiteral("a=Küche")));
}

TEST_F(CmdTreeFrame, AppliesColours)
{
    Execute("x://?color=255&bgcolor=$0000FF00");
    EXPECT_EQ(Color(QPalette::Text), Red);
    EXPECT_EQ(Color(QPalette::Base), Green);
    Execute("x://?COLOR=65280&BgColor=$FF");
    EXPECT_EQ(Color(QPalette::Text), Green);
    EXPECT_EQ(Color(QPalette::Base), Red);
}

TEST_F(CmdTreeFrame, AppliesSystemColours)
{
    for (const char* command : {"x://?bgcolor=$8000000D", "x://?bgcolor=2147483661", "x://?bgcolor=-2147483635"}) {
        Execute("x://?bgcolor=255");
        Execute(command);
        EXPECT_EQ(Color(QPalette::Base), Default(QPalette::Highlight)) << command;
    }
}

TEST_F(CmdTreeFrame, PutsTheDefaultBackForAColourThatIsNoNumber)
{
    Execute("x://?color=255&bgcolor=255");
    ASSERT_EQ(Color(QPalette::Base), Red);
    Execute("x://?bgcolor=abc");
    EXPECT_EQ(Color(QPalette::Base), Default(QPalette::Base));
    EXPECT_EQ(Color(QPalette::Text), Red);
    Execute("x://?color=");
    EXPECT_EQ(Color(QPalette::Text), Default(QPalette::Text));
}

TEST_F(CmdTreeFrame, PutsTheDefaultColourBack)
{
    Execute("x://?color=255&bgcolor=255");
    Execute("x://?color=$20000000&bgcolor=536870912");
    EXPECT_EQ(Color(QPalette::Text), Default(QPalette::Text));
    EXPECT_EQ(Color(QPalette::Base), Default(QPalette::Base));
}

TEST_F(CmdTreeFrame, ChangesNoColourWithoutAQuery)
{
    Execute("x://?color=255&bgcolor=65280");
    for (const char* command : {"x://path", "", "x://?", "x://?a=1"}) {
        Execute(command);
        EXPECT_EQ(Color(QPalette::Text), Red);
        EXPECT_EQ(Color(QPalette::Base), Green);
    }
}

TEST_F(CmdTreeFrame, LetsExceptionsReachTheHost)
{
    m_frame->Fails = true;
    bool handled = false;
    EXPECT_THROW(Target()->ExecuteCmd("x://?a=1", handled), TUserError);
    EXPECT_TRUE(handled);
    EXPECT_EQ(m_frame->Steps, QStringList({QStringLiteral("begin")}));
    EXPECT_TRUE(m_messages.Errors.isEmpty());
}

TEST_F(CmdTreeFrame, WorksWithoutAUserManager)
{
    ASSERT_EQ(UserManager(), nullptr);
    m_frame->Path = QStringLiteral("%PRJPATH%\\x.xml");
    EXPECT_TRUE(Execute("x://?a=1"));
    EXPECT_EQ(TProbeFrame::Decode("%PRJPATH%/x.xml"), QStringLiteral("%PRJPATH%\\x.xml"));
    EXPECT_EQ(TProbeFrame::Expand("$(project)/x.xml"), QStringLiteral("$(project)\\x.xml"));
}

TEST_F(CmdTreeFrame, BindsItselfWhenTheUserManagerComesLater)
{
    m_frame->Path = QStringLiteral("$(project)\\x.xml");
    Execute("");
    TTemporaryProject project;
    Execute("");
    UserManager()->OpenProject(project.Root());
    EXPECT_EQ(m_frame->Reloads, 1);
}

TEST_F(CmdTreeFrame, MayOutliveTheUserManager)
{
    {
        TTemporaryProject project;
        m_frame->Path = QStringLiteral("$(project)\\x.xml");
        Execute("");
    }
    m_frame.reset();
    TTemporaryProject project;
    EXPECT_NE(UserManager(), nullptr);
}

TEST_F(CmdTreeFrameInProject, ExpandsPathsByTheProject)
{
    const QString root = m_project.Root().replace(u'/', u'\\');
    EXPECT_EQ(TProbeFrame::Decode("%PRJPATH%/x.xml"), root + QStringLiteral("\\x.xml"));
    EXPECT_EQ(TProbeFrame::Decode("$(PROJECT)\\x.xml"), root + QStringLiteral("\\x.xml"));
    EXPECT_EQ(TProbeFrame::Expand("%prjpath%/x.xml"), root + QStringLiteral("\\x.xml"));
    qputenv("VELMORA_TEST_DIRECTORY", "/d/e");
    EXPECT_EQ(TProbeFrame::Expand("%VELMORA_TEST_DIRECTORY%/x"), QStringLiteral("\\d\\e\\x"));
    EXPECT_EQ(TProbeFrame::Decode("%VELMORA_TEST_DIRECTORY%/x"), QStringLiteral("%VELMORA_TEST_DIRECTORY%\\x"));
    qunsetenv("VELMORA_TEST_DIRECTORY");
}

TEST_F(CmdTreeFrameInProject, FollowsTheProjectWhenItsPathDependsOnIt)
{
    for (const char* path : {"%PRJPATH%\\x", "%prjpath%\\x", "$(project)/x", "x\\$(Project)"}) {
        m_frame = std::make_unique<TProbeFrame>();
        Bind(path);
        OpenAgain();
        EXPECT_EQ(m_frame->Reloads, 1) << path;
    }
}

TEST_F(CmdTreeFrameInProject, DoesNotFollowTheProjectWhenItsPathDoesNotDependOnIt)
{
    for (const char* path : {"", "C:\\x.xml", "PRJPATH\\x", "%HOME%\\x", "(project)"}) {
        Bind(path);
        OpenAgain();
        EXPECT_EQ(m_frame->Reloads, 0) << path;
    }
}

TEST_F(CmdTreeFrameInProject, ReloadsOnceAChangeHoweverOftenItWasCommanded)
{
    Bind();
    Bind("$(project)\\x");
    Bind();
    OpenAgain();
    EXPECT_EQ(m_frame->Reloads, 1);
}

TEST_F(CmdTreeFrameInProject, DoesNotReloadWhenTheProjectIsClosed)
{
    Bind();
    UserManager()->CloseProject();
    EXPECT_EQ(m_frame->Reloads, 0);
    OpenAgain();
    EXPECT_EQ(m_frame->Reloads, 1);
}

TEST_F(CmdTreeFrameInProject, DoesNotReloadForAnotherSender)
{
    Bind();
    QObject other;
    Q_EMIT UserManager()->Notify(&other, upProject, QString());
    Q_EMIT UserManager()->Notify(nullptr, upProject, QString());
    EXPECT_EQ(m_frame->Reloads, 0);
}

TEST_F(CmdTreeFrameInProject, HandsFailuresOfAReloadToTheGeneralErrorHandler)
{
    Bind();
    m_frame->Fails = true;
    OpenAgain();
    EXPECT_EQ(m_messages.Errors, QStringList({QStringLiteral("Das ging nicht.")}));
}

TEST_F(CmdTreeFrameInProject, IsNotCalledAfterItsDestruction)
{
    Bind();
    m_frame.reset();
    OpenAgain();
    EXPECT_NE(UserManager()->GetActiveProject(), nullptr);
}
