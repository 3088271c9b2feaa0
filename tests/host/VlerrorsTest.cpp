#include "Vlerrors.h"

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace
{

template <class TError> QString TextOf(const TError& error)
{
    return ErrorText(std::make_exception_ptr(error));
}

} // namespace

TEST(UserError, CarriesItsMessageInBothForms)
{
    const TUserError error(QStringLiteral("Die Küche fehlt (5 €)"));
    EXPECT_EQ(error.Message(), QStringLiteral("Die Küche fehlt (5 €)"));
    EXPECT_STREQ(error.what(), "Die Küche fehlt (5 €)");
}

TEST(UserError, IsWhatAFileErrorIs)
{
    try {
        throw TFileError(QStringLiteral("voll"));
    } catch (const TUserError& error) {
        EXPECT_EQ(error.Message(), QStringLiteral("voll"));
    }
}

TEST(ErrorText, IsTheMessageOfAUserError)
{
    EXPECT_EQ(TextOf(TUserError(QStringLiteral("Die Küche fehlt"))), QStringLiteral("Die Küche fehlt"));
    EXPECT_EQ(TextOf(TFileError(QStringLiteral("voll"))), QStringLiteral("voll"));
}

TEST(ErrorText, TellsWhatElseCanHappen)
{
    EXPECT_EQ(TextOf(std::bad_alloc()), QStringLiteral("Der Arbeitsspeicher reicht nicht aus."));
    EXPECT_EQ(TextOf(std::out_of_range("Höhe")), QStringLiteral("Interner Fehler: Höhe"));
    EXPECT_EQ(TextOf(5), QStringLiteral("Interner Fehler."));
}

TEST(ErrorText, IsNeverEmpty)
{
    EXPECT_EQ(ErrorText(nullptr), QStringLiteral("Interner Fehler."));
    EXPECT_EQ(TextOf(TUserError(QString())), QStringLiteral("Interner Fehler."));
}

TEST(ErrorHandler, ShowsTheTextByDefault)
{
    TRecordedMessages messages;
    HandleError(std::make_exception_ptr(TUserError(QStringLiteral("Die Küche fehlt"))));
    EXPECT_EQ(messages.Errors, QStringList{QStringLiteral("Die Küche fehlt")});
}

TEST(ErrorHandler, IsReplacedAndPutBack)
{
    TRecordedMessages messages;
    QStringList seen;
    SetErrorHandler([&](const std::exception_ptr& error) { seen.append(ErrorText(error)); });
    HandleError(std::make_exception_ptr(TUserError(QStringLiteral("eins"))));
    const TErrorHandler replaced = SetErrorHandler({});
    HandleError(std::make_exception_ptr(TUserError(QStringLiteral("zwei"))));
    replaced(std::make_exception_ptr(TUserError(QStringLiteral("drei"))));
    EXPECT_EQ(seen, (QStringList{QStringLiteral("eins"), QStringLiteral("drei")}));
    EXPECT_EQ(messages.Errors, QStringList{QStringLiteral("zwei")});
}

TEST(ErrorHandler, MayFail)
{
    TRecordedMessages messages;
    SetErrorHandler([](const std::exception_ptr&) { throw std::runtime_error("handler"); });
    HandleError(std::make_exception_ptr(5));
    SetErrorHandler({});
    EXPECT_TRUE(messages.Errors.isEmpty());
}

TEST(ErrorHandler, MayReplaceItself)
{
    TRecordedMessages messages;
    QString seen;
    const QString captured(1000, u'x');
    SetErrorHandler([&seen, captured](const std::exception_ptr&) {
        SetErrorHandler({});
        seen = captured;
    });
    HandleError(std::make_exception_ptr(5));
    EXPECT_EQ(seen.size(), 1000);
    HandleError(std::make_exception_ptr(5));
    EXPECT_EQ(messages.Errors, QStringList{QStringLiteral("Interner Fehler.")});
}

TEST(EntryGuard, RunsWhatItGuards)
{
    TRecordedMessages messages;
    int runs = 0;
    Guarded([&] { ++runs; });
    EXPECT_EQ(runs, 1);
    EXPECT_TRUE(messages.Errors.isEmpty());
}

TEST(EntryGuard, HandsExceptionsToTheErrorHandler)
{
    TRecordedMessages messages;
    Guarded([] { throw TFileError(QStringLiteral("voll")); });
    Guarded([] { throw 5; });
    EXPECT_EQ(messages.Errors, (QStringList{QStringLiteral("voll"), QStringLiteral("Interner Fehler.")}));
}

TEST(EntryGuard, LetsNothingUnwindThroughIt)
{
    static_assert(noexcept(Guarded([] {})));
    TRecordedMessages messages;
    Guarded([] { Guarded([] { throw TUserError(QStringLiteral("innen")); }); });
    EXPECT_EQ(messages.Errors, QStringList{QStringLiteral("innen")});
}
