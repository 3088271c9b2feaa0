#include "WindowArrangement.h"

#include <QMainWindow>
#include <QSettings>

namespace
{

const auto GeometryKey = QStringLiteral("window/geometry");

// An arrangement fits the panes that it was made of, whatever project they came from.
QString StateKey(const TLayout& layout)
{
    QStringList ids;
    for (const TPaneSetup& setup : layout)
        ids.append(setup.Id);
    return QStringLiteral("window/state/") + ids.join(u'+').replace(u'/', u'|');
}

} // namespace

void SaveArrangement(const QMainWindow& window, const TLayout& layout)
{
    QSettings settings;
    settings.setValue(GeometryKey, window.saveGeometry());
    settings.setValue(StateKey(layout), window.saveState());
}

void RestoreGeometry(QMainWindow& window)
{
    window.restoreGeometry(QSettings().value(GeometryKey).toByteArray());
}

void RestoreArrangement(QMainWindow& window, const TLayout& layout)
{
    window.restoreState(QSettings().value(StateKey(layout)).toByteArray());
}
