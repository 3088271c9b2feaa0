#pragma once

#include "Vlexport.h"
#include "Vltreenode.h"

#include <QList>
#include <QMimeData>
#include <QString>
#include <Qt>

#include <memory>
#include <optional>
#include <utility>

// A drag object that carries named text properties, as datapoints travel between panes and between two workbenches.
class VLHOST_API TPropertyDragObject
{
public:
    void Add(const QString& name, const QString& value);
    // Empty for a name that is not there; the first of several. Names compare without regard to case.
    QString GetValue(const QString& name) const;
    const QList<std::pair<QString, QString>>& Properties() const { return m_properties; }

    // The keys held when the drag started.
    Qt::KeyboardModifiers GetShiftState() const { return m_shiftState; }
    void SetShiftState(Qt::KeyboardModifiers state) { m_shiftState = state; }

    // The new object belongs to the caller (usually to a QDrag).
    QMimeData* ToMimeData() const;
    // Nothing when `data` carries no property drag object, or a damaged one.
    static std::optional<TPropertyDragObject> FromMimeData(const QMimeData* data);

private:
    QList<std::pair<QString, QString>> m_properties;
    Qt::KeyboardModifiers m_shiftState;
};

// A drag object that carries tree nodes. They cannot leave the process; nodes that are deleted on the way drop out.
class VLHOST_API TObjectsDragObject
{
public:
    // `ownsNothing` is the host's flag; every editor passes false.
    explicit TObjectsDragObject(bool ownsNothing);

    void Add(TTreeNode* node);
    // The nodes that still exist, in the order in which they were added.
    QList<TTreeNode*> Objects() const;
    bool GetFlag() const { return m_flag; }

    // The new object belongs to the caller and shares `object`.
    static QMimeData* ToMimeData(std::shared_ptr<TObjectsDragObject> object);
    // Null when `data` carries no objects, or objects of another process.
    static std::shared_ptr<TObjectsDragObject> FromMimeData(const QMimeData* data);

private:
    QList<TNodeRef> m_objects;
    bool m_flag;
};
