#include "ProblemsDialog.h"

#include "ProblemSummary.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

TProblemsDialog::TProblemsDialog(const QStringList& problems, QWidget* parent) : QDialog(parent)
{
    setWindowTitle(QStringLiteral("Meldungen zu den Dateien"));
    auto* text = new QPlainTextEdit(problems.join(u'\n'), this);
    text->setObjectName(QStringLiteral("EditProblems"));
    text->setAccessibleName(windowTitle());
    text->setReadOnly(true);
    text->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    text->setTabChangesFocus(true);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel(QStringLiteral("%1 Meldungen:").arg(CountText(problems.size())), this));
    layout->addWidget(text, 1);
    layout->addWidget(buttons);
    resize(760, 420);
}
