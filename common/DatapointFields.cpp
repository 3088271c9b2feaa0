#include "DatapointFields.h"

#include "Vldragobjects.h"
#include "Vlerrors.h"
#include "Vltext.h"

#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>

#include <algorithm>

namespace
{

// Where a dropped datapoint's EIS number lands. Deliberately no inverse of dt2Eis: an EIS 10 or 14 lands on BINÄR and
// is corrected by hand.
TDataTypeMap DroppedType(int eisNumber)
{
    switch (eisNumber) {
    case 5:
        return dtmEIS10;
    case 6:
        return dtmEIS6;
    case 9:
    case 11:
        return dtmEIS11;
    default:
        return dtmEIS1;
    }
}

// One column of labels, all of one width.
void DrawOnGrey(const QWidgetList& labels)
{
    const QColor grey(0x5A, 0x5A, 0x5A); // dark enough to read white on
    int width = 0;
    for (const QWidget* label : labels)
        width = std::max(width, label->sizeHint().width());
    for (QWidget* label : labels) {
        QPalette palette = label->palette();
        palette.setColor(QPalette::Window, grey);
        palette.setColor(QPalette::WindowText, Qt::white);
        label->setPalette(palette);
        label->setAutoFillBackground(true);
        label->setMinimumWidth(width);
    }
}

} // namespace

QLabel* MakeLabel(QWidget* field, QWidget* dialog, const char* label)
{
    const QString text = QString::fromUtf8(label);
    auto* made = new QLabel(text, dialog);
    made->setBuddy(field);
    field->setAccessibleName(text.trimmed());
    return made;
}

void PutBeside(QFormLayout* layout, QLabel* label, QWidget* field)
{
    const int row = layout->rowCount() - 1;
    QWidget* first = layout->itemAt(row, QFormLayout::FieldRole)->widget();
    first->setMinimumWidth(field->minimumWidth());
    layout->removeWidget(first);
    auto* both = new QHBoxLayout;
    both->addWidget(first, 1);
    both->addWidget(label);
    both->addWidget(field, 1);
    layout->setLayout(row, QFormLayout::FieldRole, both);
}

void DrawLabelsOnGrey(const QFormLayout* layout)
{
    QWidgetList labels;
    QWidgetList besides;
    for (int row = 0; row < layout->rowCount(); ++row) {
        QLayoutItem* label = layout->itemAt(row, QFormLayout::LabelRole);
        if (label && label->widget())
            labels.append(label->widget());
        QLayoutItem* field = layout->itemAt(row, QFormLayout::FieldRole);
        if (field && field->layout())
            besides.append(field->layout()->itemAt(1)->widget());
    }
    DrawOnGrey(labels);
    DrawOnGrey(besides);
}

void FillDataTypes(QComboBox* box)
{
    box->addItems({QStringLiteral("BINÄR"), QStringLiteral("1BYTE[%]"), QStringLiteral("1BYTE"),
                   QStringLiteral("2BYTE"), QStringLiteral("4BYTE")});
}

void FillSources(QComboBox* box)
{
    box->addItems({QStringLiteral("EIB"), QStringLiteral("MODBUS"), QStringLiteral("VIRTUAL")});
}

void SelectEntry(QComboBox* box, int index)
{
    const QSignalBlocker blocker(box);
    if (box->currentIndex() != index)
        box->setCurrentIndex(index);
}

void ReplaceSections(QComboBox* box, const QStringList& sections)
{
    const QSignalBlocker blocker(box);
    const int remembered = box->currentIndex();
    box->clear();
    box->addItems(sections);
    const int last = static_cast<int>(sections.size()) - 1;
    box->setCurrentIndex(std::min(std::max(remembered, 0), last));
}

TDatapointDrop::TDatapointDrop(QWidget* dialog, std::function<bool()> accepts,
                               std::function<void(const TDroppedDatapoint&)> take)
    : QObject(dialog), m_accepts(std::move(accepts)), m_take(std::move(take))
{
}

void TDatapointDrop::Watch(QLineEdit* edit)
{
    edit->setAcceptDrops(true);
    edit->installEventFilter(this);
}

bool TDatapointDrop::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop: {
        auto* drop = static_cast<QDropEvent*>(event);
        drop->setDropAction(Qt::CopyAction);
        drop->setAccepted(Accepts(drop->mimeData()));
        if (event->type() == QEvent::Drop && drop->isAccepted())
            Guarded([&] { Take(drop->mimeData()); });
        return true;
    }
    case QEvent::DragLeave:
        return true;
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
        return Paste(event) || QObject::eventFilter(watched, event);
    default:
        return QObject::eventFilter(watched, event);
    }
}

bool TDatapointDrop::Accepts(const QMimeData* content) const
{
    return m_accepts() && TPropertyDragObject::FromMimeData(content);
}

// A datapoint that was copied in a browser is pasted as it would be dropped.
bool TDatapointDrop::Paste(const QEvent* event) const
{
    const QMimeData* content = QGuiApplication::clipboard()->mimeData();
    const bool pastes = static_cast<const QKeyEvent*>(event)->matches(QKeySequence::Paste) && Accepts(content);
    if (pastes && event->type() == QEvent::KeyPress)
        Guarded([&] { Take(content); });
    return pastes;
}

void TDatapointDrop::Take(const QMimeData* content) const
{
    const auto object = TPropertyDragObject::FromMimeData(content);
    m_take({.Name = object->GetValue(QStringLiteral("name")),
            .Label = object->GetValue(QStringLiteral("label")),
            .DataType = DroppedType(StrToIntDef(object->GetValue(QStringLiteral("type")), 1))});
}
