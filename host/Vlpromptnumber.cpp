#include "Vlpromptnumber.h"

#include "Vlmessages.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

namespace
{

constexpr int Maximum = 1'000'000;

} // namespace

TPromptNumberDialog::TPromptNumberDialog(QWidget* parent)
    : QDialog(parent), m_caption(new QLabel(this)), m_edit(new QSpinBox(this))
{
    setWindowTitle(QApplication::applicationDisplayName());
    m_edit->setObjectName(QStringLiteral("EditNumber"));
    m_edit->setRange(1, Maximum);
    m_caption->setBuddy(m_edit);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_caption);
    layout->addWidget(m_edit);
    layout->addWidget(buttons);
}

TPromptNumberDialog::~TPromptNumberDialog() = default;

bool TPromptNumberDialog::Execute(const QString& caption)
{
    if (!IsInteractive()) {
        ShowError(QStringLiteral("\"%1\" kann hier niemand beantworten.").arg(caption.trimmed()));
        return false;
    }
    m_caption->setText(caption);
    m_edit->setAccessibleName(caption.trimmed());
    m_edit->setValue(1);
    m_edit->selectAll();
    m_edit->setFocus();
    if (exec() != Accepted)
        return false;
    m_number = m_edit->value();
    return true;
}
