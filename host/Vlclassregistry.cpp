#include "Vlclassregistry.h"

#include "Vltext.h"

#include <QMap>
#include <QWidget>

#include <algorithm>

namespace
{

struct TComponentClass
{
    QString Name;
    TComponentFactory Factory;
};

QList<TComponentClass>& Classes()
{
    static QList<TComponentClass> classes;
    return classes;
}

auto FindClass(const QString& className)
{
    return std::find_if(Classes().begin(), Classes().end(),
                        [&](const TComponentClass& entry) { return SameText(entry.Name, className); });
}

QMap<QString, QStringList>& Palette()
{
    static QMap<QString, QStringList> pages;
    return pages;
}

} // namespace

void RegisterComponent(const QString& className, TComponentFactory factory)
{
    UnregisterComponent(className);
    Classes().append({.Name = className, .Factory = std::move(factory)});
}

void UnregisterComponent(const QString& className)
{
    const auto found = FindClass(className);
    if (found != Classes().end())
        Classes().erase(found);
}

QStringList RegisteredComponents()
{
    QStringList names;
    for (const TComponentClass& entry : std::as_const(Classes()))
        names.append(entry.Name);
    return names;
}

QWidget* CreateComponent(const QString& className, QWidget* parent)
{
    const auto found = FindClass(className);
    if (found == Classes().end())
        return nullptr;
    // A copy: what the component does while it is made may change the list.
    const TComponentFactory factory = found->Factory;
    return factory(parent);
}

TClientRegistry::~TClientRegistry() = default;

bool TClientRegistry::QueryInterface(const TGuid& iid, void** result)
{
    const bool known = iid == IID_IInterface || iid == IID_IRegisterClient;
    *result = known ? static_cast<IRegisterClient*>(this) : nullptr;
    return known;
}

int TClientRegistry::AddRef()
{
    return ++m_references;
}

int TClientRegistry::Release()
{
    return --m_references;
}

void TClientRegistry::RegisterComponentClass(const QString& progId, const QString& className)
{
    const auto found = std::find_if(m_clients.begin(), m_clients.end(),
                                    [&](const TClient& client) { return SameText(client.ProgId, progId); });
    if (found == m_clients.end())
        m_clients.append({.ProgId = progId, .ClassName = className});
    else
        found->ClassName = className;
}

QString TClientRegistry::ClassOf(const QString& progIdOrClass) const
{
    const auto found = std::find_if(m_clients.begin(), m_clients.end(),
                                    [&](const TClient& client) { return SameText(client.ProgId, progIdOrClass); });
    return found == m_clients.end() ? progIdOrClass : found->ClassName;
}

void RegisterOnPalette(const QString& page, const QString& className)
{
    QStringList& classes = Palette()[page];
    if (!classes.contains(className, Qt::CaseInsensitive))
        classes.append(className);
}

QStringList PaletteClasses(const QString& page)
{
    return Palette().value(page);
}
