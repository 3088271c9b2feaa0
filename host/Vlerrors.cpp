#include "Vlerrors.h"

#include "Vlmessages.h"

#include <new>

namespace
{

void ShowErrorText(const std::exception_ptr& error)
{
    ShowError(ErrorText(error));
}

TErrorHandler& Handler()
{
    static TErrorHandler handler = ShowErrorText;
    return handler;
}

} // namespace

TUserError::TUserError(const QString& message) : std::runtime_error(message.toStdString()), m_message(message) {}
TUserError::~TUserError() = default;
TFileError::~TFileError() = default;

QString ErrorText(const std::exception_ptr& error)
{
    try {
        if (error)
            std::rethrow_exception(error);
    } catch (const TUserError& e) {
        if (!e.Message().isEmpty())
            return e.Message();
    } catch (const std::bad_alloc&) {
        return QStringLiteral("Der Arbeitsspeicher reicht nicht aus.");
    } catch (const std::exception& e) {
        return QStringLiteral("Interner Fehler: %1").arg(QString::fromUtf8(e.what()));
    } catch (...) {
    }
    return QStringLiteral("Interner Fehler.");
}

TErrorHandler SetErrorHandler(TErrorHandler handler)
{
    return std::exchange(Handler(), handler ? std::move(handler) : TErrorHandler(ShowErrorText));
}

void HandleError(const std::exception_ptr& error) noexcept
{
    try {
        // A copy: the handler may replace itself.
        const TErrorHandler handler = Handler();
        handler(error);
    } catch (...) {
        qCritical("The general error handler failed.");
    }
}
