#pragma once

#include "Layout.h"
#include "PaneClient.h"

#include <QObject>

class QDockWidget;
class QMainWindow;
class TClientRegistry;
class TPane;

// The panes of a main window, as its layout asks for them, and which of them is the active one: the one that had the
// keyboard last. Belongs to the window and takes the panes with it.
class TPanes final : public QObject, public IPaneComponents
{
    Q_OBJECT

public:
    // Both must outlive this.
    TPanes(QMainWindow& window, const TClientRegistry& clients);
    ~TPanes() override;

    const TLayout& Layout() const { return m_layout; }
    // Puts the panes of `layout` in the place of the present ones; whoever hears of it arranges them. Nothing happens
    // when the layout stays the same.
    void SetLayout(const TLayout& layout);
    // The panes in one place with tabs, as if the window was new, all of them shown, and `below` under them.
    void Arrange(QDockWidget& below);
    // Makes the components that work from the start.
    void LoadStarting();
    // Makes every component, also of panes that nobody has seen yet.
    void LoadAll();

    const QList<TPane*>& All() const { return m_panes; }
    QList<TPane*> Modified() const;
    // After another project was opened while the panes stayed.
    void HandleOtherProject();
    QWidget* ComponentOf(const QString& id) const override;

    // Null when there is none.
    TPane* Find(const QString& id) const;
    TPane* PaneOf(const QObject* object) const;
    TPane* Active() const { return m_active; }

Q_SIGNALS:
    void PanesChanged();
    void ActiveChanged();
    // See TPane::Closing.
    void Closing(TPane* pane, bool& allowed);

private:
    void AddPane(const TPaneSetup& setup);
    void TellClients() const;
    void SetActive(TPane* pane);
    void HandleFocus(QWidget* old, QWidget* now);

    QMainWindow& m_window;
    const TClientRegistry& m_clients;
    TLayout m_layout;
    QList<TPane*> m_panes;
    TPane* m_active = nullptr;
};
