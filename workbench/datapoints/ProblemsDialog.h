#pragma once

#include <QDialog>

// Every problem of a browser's files, to read and to copy. Nothing can be changed here.
class TProblemsDialog final : public QDialog
{
    Q_OBJECT

public:
    TProblemsDialog(const QStringList& problems, QWidget* parent);
};
