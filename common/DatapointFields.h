#pragma once

#include "FoldersCommon.h"

#include <QAbstractButton>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QObject>
#include <QStringList>

#include <functional>
#include <limits>
#include <type_traits>

class QComboBox;
class QMimeData;

// The fields that the properties dialogs of datapoints are made of.

// Makes a field whose width is at least `minimumWidth`.
template <class TField> TField* MakeField(QWidget* dialog, const char* name, int minimumWidth)
{
    auto* field = new TField(dialog);
    field->setObjectName(QString::fromLatin1(name));
    // A box without a text is no wider than what can be clicked.
    if constexpr (std::is_base_of_v<QAbstractButton, TField>)
        field->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    else
        field->setMinimumWidth(minimumWidth);
    // The toolkit's own limit would cut a long text without a word.
    if constexpr (std::is_base_of_v<QLineEdit, TField>)
        field->setMaxLength(std::numeric_limits<int>::max());
    return field;
}

// Makes a field's label. The label without its blanks is the field's accessible name.
QLabel* MakeLabel(QWidget* field, QWidget* dialog, const char* label);

// Puts a labelled field into a form.
template <class TField> TField* AddField(QFormLayout* layout, QWidget* dialog, const char* name, const char* label)
{
    constexpr int MinimumFieldWidth = 260;
    auto* field = MakeField<TField>(dialog, name, MinimumFieldWidth);
    layout->addRow(MakeLabel(field, dialog, label), field);
    return field;
}

// Puts a label and its field into the last row of a form, behind the field that stands there.
void PutBeside(QFormLayout* layout, QLabel* label, QWidget* field);

// Puts a labelled field into the last row of a form. The two share its room.
template <class TField>
TField* AddFieldBeside(QFormLayout* layout, QWidget* dialog, const char* name, const char* label)
{
    constexpr int MinimumFieldWidth = 140;
    auto* field = MakeField<TField>(dialog, name, MinimumFieldWidth);
    PutBeside(layout, MakeLabel(field, dialog, label), field);
    return field;
}

// Draws the labels of a form white on grey.
void DrawLabelsOnGrey(const QFormLayout* layout);

// The entries of " Typ" and " Quelle", in the order of TDataTypeMap and TNodeSource.
void FillDataTypes(QComboBox* box);
void FillSources(QComboBox* box);

// Selects an entry without telling anybody: only what the user chooses is a change.
void SelectEntry(QComboBox* box, int index);

// Replaces the sections and keeps the position as far as there are as many. Tells nobody.
void ReplaceSections(QComboBox* box, const QStringList& sections);

// A datapoint that arrived from another pane.
struct TDroppedDatapoint
{
    QString Name;
    QString Label;
    TDataTypeMap DataType = dtmEIS1;
};

// Lets datapoints be dropped on edit fields, or pasted there after they were copied in a browser. Belongs to the
// dialog.
class TDatapointDrop final : public QObject
{
public:
    // `accepts` says whether a datapoint would be taken now; `take` gets it.
    TDatapointDrop(QWidget* dialog, std::function<bool()> accepts, std::function<void(const TDroppedDatapoint&)> take);

    void Watch(QLineEdit* edit);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool Accepts(const QMimeData* content) const;
    void Take(const QMimeData* content) const;
    bool Paste(const QEvent* event) const;

    std::function<bool()> m_accepts;
    std::function<void(const TDroppedDatapoint&)> m_take;
};
