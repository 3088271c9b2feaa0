#include "Vlhourglass.h"

#include <QCursor>
#include <QGuiApplication>

THourglass::THourglass() : m_shown(qobject_cast<QGuiApplication*>(QCoreApplication::instance()) != nullptr)
{
    if (m_shown)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

THourglass::~THourglass()
{
    if (m_shown)
        QGuiApplication::restoreOverrideCursor();
}
