#pragma once

#include "Vlexport.h"

#include <QString>

#include <exception>
#include <functional>
#include <stdexcept>
#include <utility>

// A failure with a text for the user. `Message` is German and complete; `what` is the same in UTF-8.
class VLHOST_API TUserError : public std::runtime_error
{
public:
    explicit TUserError(const QString& message);
    ~TUserError() override;

    QString Message() const { return m_message; }

private:
    QString m_message;
};

// An input or output failure; the message names the path.
class VLHOST_API TFileError : public TUserError
{
public:
    using TUserError::TUserError;
    ~TFileError() override;
};

// The text that a user is shown for `error`; never empty.
VLHOST_API QString ErrorText(const std::exception_ptr& error);

// Takes what escaped from a piece of user-interface code. The default shows the text as an error message.
using TErrorHandler = std::function<void(const std::exception_ptr& error)>;

// Replaces the general error handler; an empty one puts the default back. Returns the previous one.
VLHOST_API TErrorHandler SetErrorHandler(TErrorHandler handler);

// Hands `error` to the general error handler. Never throws.
VLHOST_API void HandleError(const std::exception_ptr& error) noexcept;

// The entry guard: runs what the toolkit calls (menu actions, timers, notifications) and hands an exception to the
// general error handler instead of letting it unwind through the toolkit.
template <class TFunction> void Guarded(TFunction&& function) noexcept
{
    try {
        std::forward<TFunction>(function)();
    } catch (...) {
        HandleError(std::current_exception());
    }
}
