#include "dlgLogo.h"

#include "DatapointFields.h"
#include "Vlerrors.h"
#include "Vlmessages.h"

#include <QPushButton>

TLogoDialog::TLogoDialog(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowStaysOnTopHint | Qt::WindowCloseButtonHint | Qt::WindowTitleHint)
{
    setObjectName(QStringLiteral("TLogoDialog"));
    setWindowTitle(QStringLiteral("Logo Dialog"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* fields = new QFormLayout;
    m_path = AddField<TVlFileDropEdit>(fields, this, "EditPath", " Pfad");
    // Not before the drop is over: a box would hold up whoever the file comes from.
    connect(
        m_path, &TVlFileDropEdit::FileDropped, this,
        [](const QString& text) { Guarded([&] { ShowInformation(text); }); }, Qt::QueuedConnection);

    auto* ok = new QPushButton(QStringLiteral("OK"), this);
    ok->setObjectName(QStringLiteral("BtnOK"));
    ok->setDefault(true);
    auto* cancel = new QPushButton(QStringLiteral("Abbrechen"), this);
    cancel->setObjectName(QStringLiteral("BtnCancel"));
    cancel->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* all = new QVBoxLayout(this);
    all->addLayout(fields);
    all->addLayout(buttons);
    all->setSizeConstraint(QLayout::SetFixedSize);
}

TLogoDialog::~TLogoDialog() = default;

void TLogoDialog::SetLogoLink(const QString& link)
{
    m_path->setText(link);
}

QString TLogoDialog::GetLogoLink() const
{
    return m_path->text();
}

void TLogoDialog::Display()
{
    setModal(false);
    show();
    raise();
    activateWindow();
}

bool TLogoDialog::Execute()
{
    return exec() != Rejected;
}

void TLogoDialog::done(int result)
{
    if (result == Rejected)
        m_path->clear();
    Guarded([this] {
        if (m_closeEvent)
            m_closeEvent(this);
    });
    QDialog::done(result);
}
