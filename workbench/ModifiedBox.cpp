#include "ModifiedBox.h"

#include <QApplication>
#include <QPushButton>

namespace
{

QString QuestionText(const QStringList& titles)
{
    if (titles.size() == 1) {
        return QStringLiteral("Der Bereich \"%1\" enthält Änderungen, die noch nicht exportiert sind.")
            .arg(titles.first());
    }
    return QStringLiteral("Diese Bereiche enthalten Änderungen, die noch nicht exportiert sind: %1.")
        .arg(titles.join(QStringLiteral(", ")));
}

} // namespace

TModifiedBox::TModifiedBox(const QStringList& titles, QWidget* parent)
    : QMessageBox(Warning, QApplication::applicationDisplayName(), QuestionText(titles), NoButton, parent),
      m_export(addButton(QStringLiteral("&Exportieren"), AcceptRole)),
      m_discard(addButton(QStringLiteral("&Verwerfen"), DestructiveRole))
{
    setTextFormat(Qt::PlainText);
    setEscapeButton(addButton(QStringLiteral("&Abbrechen"), RejectRole));
    setDefaultButton(m_export);
}

TModifiedAnswer TModifiedBox::Answer() const
{
    if (clickedButton() == m_export)
        return TModifiedAnswer::Export;
    return clickedButton() == m_discard ? TModifiedAnswer::Discard : TModifiedAnswer::Cancel;
}

TModifiedAnswer TModifiedBoxAsker::Ask(const QStringList& titles)
{
    TModifiedBox box(titles, QApplication::activeWindow());
    box.exec();
    return box.Answer();
}
