#include "PaneMenu.h"

#include "Pane.h"
#include "Panes.h"

namespace
{

// The mnemonics of the menus beside this one: Projekt, Ansicht, Hilfe.
constexpr auto TakenMnemonics = u"PAH";

} // namespace

TPaneMenu::TPaneMenu(const TPanes& panes, QWidget* parent) : QMenu(parent), m_panes(panes)
{
    setObjectName(QStringLiteral("PaneMenu"));
    connect(&panes, &TPanes::ActiveChanged, this, &TPaneMenu::Rebuild);
    connect(this, &QMenu::aboutToShow, this, &TPaneMenu::Rebuild);
    Rebuild();
}

void TPaneMenu::Rebuild()
{
    clear();
    const TPane* pane = m_panes.Active();
    setTitle(WithMnemonic(pane ? pane->Title() : QStringLiteral("Bereich"), TakenMnemonics));
    if (pane)
        addActions(pane->Actions());
    menuAction()->setEnabled(!isEmpty());
}

QString WithMnemonic(const QString& title, QStringView taken)
{
    QString result;
    bool placed = false;
    for (const QChar letter : title) {
        if (letter == u'&') {
            result += QStringLiteral("&&");
            continue;
        }
        if (!placed && letter.isLetter() && !taken.contains(letter.toUpper())) {
            result += u'&';
            placed = true;
        }
        result += letter;
    }
    return result;
}
