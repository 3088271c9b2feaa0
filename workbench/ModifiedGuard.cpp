#include "ModifiedGuard.h"

#include "Pane.h"
#include "Vlerrors.h"
#include "Vlmessages.h"

#include <algorithm>

namespace
{

const auto ExportAction = QStringLiteral("MenuAction_Export");

// Passes every message on and remembers whether an error was among them.
class TErrorWatch final : public IMessageHandler
{
public:
    TErrorWatch() : m_next(SetMessageHandler(this)) {}
    ~TErrorWatch() override { SetMessageHandler(m_next); }

    bool HasSeenError() const { return m_seenError; }

    void ShowInformation(const QString& text) override
    {
        Pass([&] { ::ShowInformation(text); });
    }

    void ShowError(const QString& text) override
    {
        m_seenError = true;
        Pass([&] { ::ShowError(text); });
    }

    bool IsInteractive() const override { return m_next ? m_next->IsInteractive() : true; }

    bool Confirm(const QString& text) override
    {
        bool confirmed = false;
        Pass([&] { confirmed = ::Confirm(text); });
        return confirmed;
    }

    void Note(const QObject* source, const QString& text) override
    {
        Pass([&] { ::Note(source, text); });
    }

private:
    // The host's own boxes are no handler that could be called: they answer while none is set.
    template <class TFunction> void Pass(TFunction&& function)
    {
        SetMessageHandler(m_next);
        function();
        SetMessageHandler(this);
    }

    IMessageHandler* m_next;
    bool m_seenError = false;
};

bool IsModified(const TPane* pane)
{
    return pane->IsModified();
}

bool ExportAll(const QList<TPane*>& panes)
{
    const TErrorWatch watch;
    for (TPane* pane : panes) {
        Guarded([pane] { pane->Trigger(ExportAction); });
        if (watch.HasSeenError())
            return false;
    }
    return std::none_of(panes.begin(), panes.end(), IsModified);
}

} // namespace

IModifiedAsker::~IModifiedAsker() = default;

bool MayLose(const QList<TPane*>& panes, IModifiedAsker& asker)
{
    for (TPane* pane : panes)
        pane->CommitEdits();
    QList<TPane*> modified;
    std::copy_if(panes.begin(), panes.end(), std::back_inserter(modified), IsModified);
    if (modified.isEmpty())
        return true;
    QStringList titles;
    for (const TPane* pane : std::as_const(modified))
        titles.append(pane->Title());
    switch (asker.Ask(titles)) {
    case TModifiedAnswer::Export:
        return ExportAll(modified);
    case TModifiedAnswer::Discard:
        return true;
    case TModifiedAnswer::Cancel:
        break;
    }
    return false;
}
