#pragma once

#include "Vlexport.h"
#include "Vlinterfaces.h"

#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

// Makes a component. The control belongs to `parent`; without one it belongs to the caller.
using TComponentFactory = std::function<QWidget*(QWidget* parent)>;

// The classes that packages offer, by class name (without regard to case).

// A class that is registered again takes the new factory.
VLHOST_API void RegisterComponent(const QString& className, TComponentFactory factory);
VLHOST_API void UnregisterComponent(const QString& className);
VLHOST_API QStringList RegisteredComponents();

// A new component of that class, or null when no package offers it.
VLHOST_API QWidget* CreateComponent(const QString& className, QWidget* parent);

// {5C3E7A10-91B4-4D7E-8F26-3B0A64D1C9E2}
inline constexpr TGuid IID_IRegisterClient{
    0x5C3E7A10, 0x91B4, 0x4D7E, {0x8F, 0x26, 0x3B, 0x0A, 0x64, 0xD1, 0xC9, 0xE2}};

// The application's registry of clients: which ProgID in a command text means which class.
class IRegisterClient : public IInterface
{
public:
    virtual void RegisterComponentClass(const QString& progId, const QString& className) = 0;

protected:
    ~IRegisterClient() = default;
};

// The client registry that an application offers as IID_IRegisterClient.
class VLHOST_API TClientRegistry : public IRegisterClient
{
public:
    virtual ~TClientRegistry();

    bool QueryInterface(const TGuid& iid, void** result) override;
    int AddRef() override;
    int Release() override;
    void RegisterComponentClass(const QString& progId, const QString& className) override;

    // The class of a ProgID, without regard to case, or the name itself when it is no ProgID.
    QString ClassOf(const QString& progIdOrClass) const;

private:
    struct TClient
    {
        QString ProgId;
        QString ClassName;
    };

    QList<TClient> m_clients;
    int m_references = 0;
};

// The component palette of a form designer: class names by page. A class put on a page twice is there once.
VLHOST_API void RegisterOnPalette(const QString& page, const QString& className);
VLHOST_API QStringList PaletteClasses(const QString& page);
