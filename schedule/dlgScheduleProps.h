#pragma once

#include "PropsDialog.h"

#include <QStringList>

#include <array>
#include <cstdint>
#include <functional>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QStackedWidget;
class QTimeEdit;
struct TDroppedDatapoint;

// Edits one node of the schedule tree: the record of a datapoint on the node page, or a switching entry, which it takes
// apart from its text and builds anew, on the schedule page. One instance serves all frames of the process; the frame
// that shows a node fills it and takes the values back through the apply event. What is set here raises no event and is
// no change.
class TSchedulePropsDialog final : public TPropsDialog
{
    Q_OBJECT

public:
    // The user chose another section, by its index.
    using TChangePartEvent = std::function<void(QObject* sender, int thePart)>;

    explicit TSchedulePropsDialog(QWidget* parent);
    ~TSchedulePropsDialog() override;

    // The band above the fields. Comes back without blanks at its ends.
    void SetTitle(const QString& title);
    QString GetTitle() const;

    // Which of the two pages is shown. Changing to the node page empties the title.
    void SetIsSchedule(bool isSchedule);
    bool GetIsSchedule() const;

    // The node page. Access that is not a number reads as 0. Setting an empty name also lets the alias be edited.
    void SetSection(int index);
    int GetSection() const;
    // Replaces the sections and keeps the position as far as there are as many; -1 when there are none.
    void SetScheduleGroups(const QStringList& groups);
    void SetNodeAlias(const QString& alias);
    QString GetNodeAlias() const;
    void SetItemName(const QString& name);
    QString GetItemName() const;
    void SetNodeMinVal(const QString& value);
    QString GetNodeMinVal() const;
    void SetNodeMaxVal(const QString& value);
    QString GetNodeMaxVal() const;
    void SetDataType(TDataTypeMap type);
    TDataTypeMap GetDataType() const;
    void SetEnableFlag(bool enabled);
    bool GetEnableFlag() const;
    void SetNodeAccess(std::int32_t access);
    std::int32_t GetNodeAccess() const;
    void SetNodeSource(TNodeSource source);
    TNodeSource GetNodeSource() const;

    // The schedule page, as the text of an entry. Setting one changes to that page; a text that is no entry changes
    // nothing. The text that comes back is always built anew.
    void SetScheduleText(const QString& text);
    QString GetScheduleText() const;

    void SetChangePartEvent(TChangePartEvent event) { m_changePartEvent = std::move(event); }

private:
    QWidget* MakeTop();
    QWidget* MakeNodePage();
    QWidget* MakeSchedulePage();
    QWidget* MakeDays();
    void ConnectFields();
    void ChangePart();
    void TakeDropped(const TDroppedDatapoint& datapoint);

    QLabel* m_title = nullptr;
    QStackedWidget* m_pages = nullptr;

    QComboBox* m_section = nullptr;
    QLineEdit* m_alias = nullptr;
    QLineEdit* m_name = nullptr;
    QLineEdit* m_minVal = nullptr;
    QLineEdit* m_maxVal = nullptr;
    QComboBox* m_dataType = nullptr;
    QCheckBox* m_nodeEnabled = nullptr;
    QLineEdit* m_access = nullptr;
    QComboBox* m_source = nullptr;

    std::array<QCheckBox*, 7> m_days{}; // from Monday on
    QCheckBox* m_entryEnabled = nullptr;
    QCheckBox* m_postProcess = nullptr;
    QTimeEdit* m_time = nullptr;
    QLineEdit* m_value = nullptr;

    TChangePartEvent m_changePartEvent;
};
