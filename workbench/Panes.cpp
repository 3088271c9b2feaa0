#include "Panes.h"

#include "Pane.h"

#include <QApplication>
#include <QMainWindow>

#include <algorithm>

TPanes::TPanes(QMainWindow& window, const TClientRegistry& clients) : m_window(window), m_clients(clients)
{
    connect(qApp, &QApplication::focusChanged, this, &TPanes::HandleFocus);
}

TPanes::~TPanes()
{
    m_active = nullptr;
    qDeleteAll(std::exchange(m_panes, {}));
}

void TPanes::SetLayout(const TLayout& layout)
{
    if (layout == m_layout)
        return;
    m_layout = layout;
    SetActive(nullptr);
    qDeleteAll(std::exchange(m_panes, {}));
    for (const TPaneSetup& setup : layout)
        AddPane(setup);
    SetActive(m_panes.value(0));
    Q_EMIT PanesChanged();
}

void TPanes::AddPane(const TPaneSetup& setup)
{
    auto* pane = new TPane(setup, m_clients, &m_window);
    connect(pane, &TPane::Closing, this, &TPanes::Closing);
    connect(pane, &TPane::ComponentMade, this, &TPanes::TellClients);
    connect(pane, &TPane::ComponentChanged, this, [this, pane] {
        TellClients();
        if (pane == m_active)
            Q_EMIT ActiveChanged();
    });
    m_panes.append(pane);
}

// Tabs, because one beside the other would leave none of the panes room enough; but what is dragged from stands beside
// what is dragged to. All stand in one area of the window, because without a central widget the areas do not share its
// room well.
void TPanes::Arrange(QDockWidget& below)
{
    below.setFloating(false);
    m_window.addDockWidget(Qt::LeftDockWidgetArea, &below);
    below.show();
    for (TPane* pane : std::as_const(m_panes)) {
        pane->setFloating(false);
        m_window.addDockWidget(Qt::LeftDockWidgetArea, pane);
        pane->show();
    }
    if (m_panes.isEmpty())
        return;
    // A split beside a pane that has tabs already would become one more tab.
    TPane* first = m_panes.constFirst();
    m_window.splitDockWidget(first, &below, Qt::Vertical);
    TPane* beside = nullptr;
    for (TPane* pane : m_panes.mid(1)) {
        if (pane->StandsBeside() && !beside) {
            beside = pane;
            m_window.splitDockWidget(first, pane, Qt::Horizontal);
        }
    }
    for (TPane* pane : m_panes.mid(1)) {
        if (pane != beside)
            m_window.tabifyDockWidget(pane->StandsBeside() ? beside : first, pane);
    }
    first->raise();
    if (beside) {
        beside->raise();
        m_window.resizeDocks({first, beside}, {1, 1}, Qt::Horizontal);
    }
}

void TPanes::LoadStarting()
{
    for (TPane* pane : std::as_const(m_panes)) {
        if (pane->LoadsAtStart())
            pane->Load();
    }
}

void TPanes::LoadAll()
{
    for (TPane* pane : std::as_const(m_panes))
        pane->Load();
}

void TPanes::HandleOtherProject()
{
    for (TPane* pane : std::as_const(m_panes))
        pane->HandleOtherProject();
}

QWidget* TPanes::ComponentOf(const QString& id) const
{
    const TPane* pane = Find(id);
    return pane ? pane->Component() : nullptr;
}

void TPanes::TellClients() const
{
    for (const TPane* pane : m_panes) {
        if (auto* client = qobject_cast<IPaneClient*>(pane->Component()))
            client->FollowPanes(*this);
    }
}

QList<TPane*> TPanes::Modified() const
{
    QList<TPane*> modified;
    std::copy_if(m_panes.begin(), m_panes.end(), std::back_inserter(modified),
                 [](const TPane* pane) { return pane->IsModified(); });
    return modified;
}

TPane* TPanes::Find(const QString& id) const
{
    const auto found =
        std::find_if(m_panes.begin(), m_panes.end(), [&](const TPane* pane) { return pane->Id() == id; });
    return found == m_panes.end() ? nullptr : *found;
}

TPane* TPanes::PaneOf(const QObject* object) const
{
    const auto found =
        std::find_if(m_panes.begin(), m_panes.end(), [&](const TPane* pane) { return pane->Contains(object); });
    return found == m_panes.end() ? nullptr : *found;
}

void TPanes::SetActive(TPane* pane)
{
    if (pane == m_active)
        return;
    m_active = pane;
    Q_EMIT ActiveChanged();
}

// A menu, a dialog or the message pane takes the keyboard without making the pane inactive.
void TPanes::HandleFocus(QWidget*, QWidget* now)
{
    if (TPane* pane = PaneOf(now))
        SetActive(pane);
}
