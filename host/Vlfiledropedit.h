#pragma once

#include "Vlexport.h"

#include <QLineEdit>

#include <functional>

// Called with the path of a dropped file before it is taken over: may change it (into a URL, say) or refuse it by
// returning false.
using TValidateFileEvent = std::function<bool(QObject* sender, QString& fileName)>;

// An edit field that takes the path of a file dropped on it, besides what is typed.
class VLHOST_API TVlFileDropEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit TVlFileDropEdit(QWidget* parent = nullptr);
    ~TVlFileDropEdit() override;

    void SetValidateFileEvent(TValidateFileEvent event) { m_validateFile = std::move(event); }

Q_SIGNALS:
    // A dropped file has replaced the text.
    void FileDropped(const QString& text);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    bool Validates(QString& fileName);

    TValidateFileEvent m_validateFile;
};
