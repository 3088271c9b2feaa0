#include "AccessField.h"

#include "DatapointFields.h"

#include <QLineEdit>
#include <QSpinBox>

namespace
{

constexpr int HighestAccess = 20;

// Lets its text say something else than its value.
class TAccessBox final : public QSpinBox
{
public:
    using QSpinBox::QSpinBox;

    void ShowText(const QString& text) { lineEdit()->setText(text); }
};

} // namespace

QSpinBox* AddAccessField(QFormLayout* layout, QWidget* dialog)
{
    QSpinBox* field = AddField<TAccessBox>(layout, dialog, "EditAccess", " Zugang");
    field->setRange(0, HighestAccess);
    return field;
}

void SetAccessAsGiven(QSpinBox* field, std::int32_t access)
{
    field->setValue(access);
    static_cast<TAccessBox*>(field)->ShowText(QString::number(access));
}
