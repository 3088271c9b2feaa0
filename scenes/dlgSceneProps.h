#pragma once

#include "PropsDialog.h"

#include <QStringList>

#include <cstdint>
#include <functional>

class QCheckBox;
class QComboBox;
class QFormLayout;
class QLineEdit;
class TVlFileDropEdit;
struct TDroppedDatapoint;

// Edits the values of one node of the configuration tree: a trigger, an action, a scene or a step. One instance serves
// all frames of the process; the frame that shows a node fills it and takes the values back through the apply event.
// Datapoints can be dropped on its name fields while one of the two datapoint lists is its section.
class TScenePropsDialog final : public TPropsDialog
{
    Q_OBJECT

public:
    // The user chose another section, by its index.
    using TChangePartEvent = std::function<void(QObject* sender, int thePart)>;

    explicit TScenePropsDialog(QWidget* parent);
    ~TScenePropsDialog() override;

    // Setting an empty name also lets the alias be edited.
    void SetItemName(const QString& name);
    QString GetItemName() const;
    void SetNodeAlias(const QString& alias);
    QString GetNodeAlias() const;
    void SetNodeValue(const QString& value);
    QString GetNodeValue() const;
    // Text that is not a number reads as 0.
    void SetNodeDelay(std::int32_t delay);
    std::int32_t GetNodeDelay() const;
    void SetEnableFlag(bool enabled);
    bool GetEnableFlag() const;
    void SetDataType(TDataTypeMap type);
    TDataTypeMap GetDataType() const;
    void SetNodeSource(TNodeSource source);
    TNodeSource GetNodeSource() const;

    // Indexes 0 and 1 are the datapoint lists, the others scenes. -1 for none.
    void SetSection(int index);
    int GetSection() const;
    // Replaces the sections and keeps the position as far as there are as many.
    void SetSceneSections(const QStringList& sections);
    // Datapoint mode (name, type and source can be edited, the alias only without a name) or scene mode (the alias
    // only).
    void SetAcceptEsfItems(bool accept);

    void SetChangePartEvent(TChangePartEvent event) { m_changePartEvent = std::move(event); }

protected:
    // The move buttons do nothing at all while nobody is there to move.
    bool ForgetsWithoutMove() const override { return false; }

private:
    void MakeFields(QFormLayout* layout);
    void ConnectFields();
    void ChangePart();
    void TakeDropped(const TDroppedDatapoint& datapoint);

    QComboBox* m_section = nullptr;
    QLineEdit* m_alias = nullptr;
    QLineEdit* m_name = nullptr;
    TVlFileDropEdit* m_value = nullptr;
    QCheckBox* m_enabled = nullptr;
    QLineEdit* m_delay = nullptr;
    QComboBox* m_dataType = nullptr;
    QComboBox* m_source = nullptr;
    TChangePartEvent m_changePartEvent;
};
