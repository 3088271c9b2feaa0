#pragma once

#include <QMenu>

class TPane;
class TPanes;

// The menu that carries the name and the actions of the active pane. The actions stay the component's own; the menu
// shows them in their present state each time it opens.
class TPaneMenu final : public QMenu
{
    Q_OBJECT

public:
    // `panes` must outlive the menu or at least not change any more after it.
    TPaneMenu(const TPanes& panes, QWidget* parent);

private:
    void Rebuild();

    const TPanes& m_panes;
};

// `title` for the menu bar: with a mnemonic that none of `taken` (upper-case letters) uses, where it has one.
QString WithMnemonic(const QString& title, QStringView taken);
