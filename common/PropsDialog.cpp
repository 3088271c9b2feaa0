#include "PropsDialog.h"

#include "Vlerrors.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QToolButton>

TPropsDialog::TPropsDialog(const QString& caption, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowStaysOnTopHint | Qt::WindowCloseButtonHint | Qt::WindowTitleHint),
      m_up(MakeMoveButton("SBtnUp", Qt::UpArrow, QStringLiteral("Vorhergehender Menueintrag"), dirUp)),
      m_down(MakeMoveButton("SBtnDown", Qt::DownArrow, QStringLiteral("Nachfolgender Menueintrag"), dirDown)),
      m_autoAccept(new QCheckBox(QStringLiteral("Änderungen bei Wechsel automatisch übernehmen"), this)),
      m_buttonRow(new QWidget(this)),
      m_ok(new QPushButton(QStringLiteral("OK"), m_buttonRow)),
      m_apply(new QPushButton(QStringLiteral("Übernehmen"), m_buttonRow)),
      m_cancel(new QPushButton(QStringLiteral("Abbrechen"), m_buttonRow))
{
    setWindowTitle(caption);
    m_autoAccept->setObjectName(QStringLiteral("CheckAutoAccept"));
    m_autoAccept->setChecked(true);
    MakeButtons();
}

TPropsDialog::~TPropsDialog() = default;

QToolButton* TPropsDialog::MakeMoveButton(const char* name, Qt::ArrowType arrow, const QString& hint,
                                          TDirection direction)
{
    auto* button = new QToolButton(this);
    button->setObjectName(QString::fromLatin1(name));
    button->setArrowType(arrow);
    button->setAutoRaise(true);
    button->setToolTip(hint);
    button->setAccessibleName(hint);
    button->setFocusPolicy(Qt::NoFocus);
    button->setShortcut(direction == dirUp ? QKeySequence(Qt::ALT | Qt::Key_Up) : QKeySequence(Qt::ALT | Qt::Key_Down));
    connect(button, &QToolButton::clicked, this, [this, direction] {
        Guarded([&] {
            if (m_moveEvent)
                m_moveEvent(this, direction);
            if (m_moveEvent || ForgetsWithoutMove())
                SetChanged(false);
        });
    });
    return button;
}

void TPropsDialog::MakeButtons()
{
    m_ok->setObjectName(QStringLiteral("BtnOK"));
    m_ok->setDefault(true);
    m_apply->setObjectName(QStringLiteral("BtnApply"));
    m_apply->setAutoDefault(false);
    m_apply->setEnabled(false);
    m_cancel->setObjectName(QStringLiteral("BtnCancel"));
    m_cancel->setAutoDefault(false);
    connect(m_ok, &QPushButton::clicked, this, [this] {
        Apply();
        accept();
    });
    connect(m_apply, &QPushButton::clicked, this, &TPropsDialog::Apply);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* layout = new QHBoxLayout(m_buttonRow);
    layout->setContentsMargins({});
    layout->addStretch();
    for (QPushButton* button : {m_ok, m_apply, m_cancel})
        layout->addWidget(button);
}

void TPropsDialog::ArrangeFields(QLayout* fields)
{
    auto* moveButtons = new QVBoxLayout;
    moveButtons->addWidget(m_up);
    moveButtons->addWidget(m_down);
    moveButtons->addStretch();
    auto* top = new QHBoxLayout;
    top->addLayout(fields, 1);
    top->addLayout(moveButtons);
    auto* all = new QVBoxLayout(this);
    all->addLayout(top);
    all->addWidget(m_autoAccept);
    all->addWidget(m_buttonRow);
}

void TPropsDialog::EndTabOrder(QWidget* last)
{
    const QList<QWidget*> order{last, m_ok, m_apply, m_cancel, m_autoAccept};
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

void TPropsDialog::SetApplyEvent(TNotifyEvent event)
{
    m_applyEvent = std::move(event);
    m_apply->setEnabled(static_cast<bool>(m_applyEvent));
}

bool TPropsDialog::GetAutoAccept() const
{
    return m_autoAccept->isChecked();
}

void TPropsDialog::SetAutoAccept(bool autoAccept)
{
    m_autoAccept->setChecked(autoAccept);
}

void TPropsDialog::Display()
{
    SetChanged(false);
    setModal(false);
    show();
    raise();
    activateWindow();
}

bool TPropsDialog::Execute()
{
    SetChanged(false);
    m_apply->setEnabled(static_cast<bool>(m_applyEvent));
    return exec() != Rejected;
}

void TPropsDialog::done(int result)
{
    QDialog::done(result);
    Guarded([this] {
        if (m_closeEvent)
            m_closeEvent(this);
    });
}

void TPropsDialog::Apply()
{
    Guarded([this] {
        if (m_applyEvent)
            m_applyEvent(this);
    });
}
