#include "Vldragobjects.h"

#include "Vltext.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace
{

const auto PropertiesFormat = QStringLiteral("application/x-velmora-properties");
const auto ObjectsFormat = QStringLiteral("application/x-velmora-objects");
const auto ShiftKey = QStringLiteral("shift");
const auto PropertiesKey = QStringLiteral("properties");

class TObjectsMimeData final : public QMimeData
{
    Q_OBJECT

public:
    explicit TObjectsMimeData(std::shared_ptr<TObjectsDragObject> object) : Object(std::move(object))
    {
        setData(ObjectsFormat, {});
    }

    const std::shared_ptr<TObjectsDragObject> Object;
};

} // namespace

void TPropertyDragObject::Add(const QString& name, const QString& value)
{
    m_properties.append({name, value});
}

QString TPropertyDragObject::GetValue(const QString& name) const
{
    for (const auto& [key, value] : m_properties) {
        if (SameText(key, name))
            return value;
    }
    return {};
}

QMimeData* TPropertyDragObject::ToMimeData() const
{
    QJsonArray properties;
    for (const auto& [name, value] : m_properties)
        properties.append(QJsonArray{name, value});
    const QJsonObject content{{ShiftKey, static_cast<int>(m_shiftState)}, {PropertiesKey, properties}};
    auto* data = new QMimeData;
    data->setData(PropertiesFormat, QJsonDocument(content).toJson(QJsonDocument::Compact));
    return data;
}

std::optional<TPropertyDragObject> TPropertyDragObject::FromMimeData(const QMimeData* data)
{
    if (!data || !data->hasFormat(PropertiesFormat))
        return std::nullopt;
    const QJsonDocument document = QJsonDocument::fromJson(data->data(PropertiesFormat));
    if (!document[PropertiesKey].isArray())
        return std::nullopt;
    TPropertyDragObject object;
    object.m_shiftState = Qt::KeyboardModifiers(document[ShiftKey].toInt()) & Qt::KeyboardModifierMask;
    const QJsonArray properties = document[PropertiesKey].toArray();
    for (const auto& property : properties) {
        if (!property[0].isString() || !property[1].isString())
            return std::nullopt;
        object.Add(property[0].toString(), property[1].toString());
    }
    return object;
}

TObjectsDragObject::TObjectsDragObject(bool ownsNothing) : m_flag(ownsNothing) {}

void TObjectsDragObject::Add(TTreeNode* node)
{
    m_objects.append(TNodeRef(node));
}

QList<TTreeNode*> TObjectsDragObject::Objects() const
{
    QList<TTreeNode*> nodes;
    for (const TNodeRef& reference : m_objects) {
        if (reference.Get())
            nodes.append(reference.Get());
    }
    return nodes;
}

QMimeData* TObjectsDragObject::ToMimeData(std::shared_ptr<TObjectsDragObject> object)
{
    return new TObjectsMimeData(std::move(object));
}

std::shared_ptr<TObjectsDragObject> TObjectsDragObject::FromMimeData(const QMimeData* data)
{
    const auto* objects = qobject_cast<const TObjectsMimeData*>(data);
    return objects ? objects->Object : nullptr;
}

#include "Vldragobjects.moc"
