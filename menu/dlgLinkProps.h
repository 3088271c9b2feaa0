#pragma once

#include "PropsDialog.h"
#include "Vlfiledropedit.h"

#include <cstdint>

class QComboBox;
class QLineEdit;
class QSpinBox;
struct TDroppedDatapoint;

// Edits one sensitive link: a datapoint that the visualisation may address. One instance serves all frames of the
// process; the frame that shows a link fills it and takes the values back through the apply event. Every change of a
// field is a change, also one made here: whoever fills the dialog clears the flag. Datapoints can be dropped on its
// name fields.
class TLinkPropsDialog final : public TPropsDialog
{
    Q_OBJECT

public:
    explicit TLinkPropsDialog(QWidget* parent);
    ~TLinkPropsDialog() override;

    void SetLinkUrl(const QString& url);
    QString GetLinkUrl() const;
    void SetNodeAlias(const QString& alias);
    QString GetNodeAlias() const;
    // Setting an empty name also lets the alias be edited.
    void SetItemName(const QString& name);
    QString GetItemName() const;
    void SetNodeValue(const QString& value);
    QString GetNodeValue() const;
    void SetDataType(TDataTypeMap type);
    TDataTypeMap GetDataType() const;
    void SetNodeSource(TNodeSource source);
    TNodeSource GetNodeSource() const;
    // 0 to 20; a number beyond that becomes the nearest one within.
    void SetAccessCode(std::int32_t access);
    std::int32_t GetAccessCode() const;

    // Datapoint mode (name, type and source can be edited, the alias only without a name) or not (the alias only).
    void SetAcceptEsfItems(bool accept);

    // Asked about every file that is dropped on the URL.
    void SetValidateFileEvent(const TValidateFileEvent& event) { m_url->SetValidateFileEvent(event); }

private:
    void ConnectFields();
    void TakeDropped(const TDroppedDatapoint& datapoint);

    TVlFileDropEdit* m_url = nullptr;
    QLineEdit* m_alias = nullptr;
    QLineEdit* m_name = nullptr;
    TVlFileDropEdit* m_value = nullptr;
    QComboBox* m_dataType = nullptr;
    QSpinBox* m_access = nullptr;
    QComboBox* m_source = nullptr;
};
