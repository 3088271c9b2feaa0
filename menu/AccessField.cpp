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

protected:
    // The toolkit shows the value anew.
    void showEvent(QShowEvent* event) override
    {
        const QString text = lineEdit()->text();
        QSpinBox::showEvent(event);
        if (lineEdit()->text() != text)
            ShowText(text);
    }
};

} // namespace

QSpinBox* AddAccessField(QFormLayout* layout, QWidget* dialog)
{
    auto* field = AddField<TAccessBox>(layout, dialog, "EditAccess", " Zugang");
    field->setRange(0, HighestAccess);
    // The toolkit would show it with the dialog only.
    field->ShowText(QString::number(field->value()));
    return field;
}

void SetAccessAsGiven(QSpinBox* field, std::int32_t access)
{
    field->setValue(access);
    static_cast<TAccessBox*>(field)->ShowText(QString::number(access));
}
