#include "MenuExport.h"

#include "FileAccessPolicy.h"
#include "Vlapputils.h"
#include "Vlerrors.h"
#include "Vlfilereplacer.h"
#include "XmlMemory.h"
#include "XmlMessages.h"

#include <QFile>
#include <QScopeGuard>

#include <libxml/parser.h>
#include <libxslt/imports.h>
#include <libxslt/security.h>
#include <libxslt/transform.h>
#include <libxslt/xslt.h>
#include <libxslt/xsltInternals.h>
#include <libxslt/xsltutils.h>

#include <algorithm>
#include <cstdio>
#include <memory>

#include <unistd.h>

namespace
{

// What one transformation may take. The product's stylesheet takes 4 million instructions and 26 million steps of paths
// for a menu of 110,000 items.
constexpr unsigned long InstructionLimit = 50'000'000;
constexpr unsigned long PathStepLimit = 150'000'000;

struct TXmlDeleter
{
    void operator()(xmlDocPtr document) const { xmlFreeDoc(document); }
    void operator()(xsltStylesheetPtr style) const { xsltFreeStylesheet(style); }
    void operator()(xsltTransformContextPtr context) const { xsltFreeTransformContext(context); }
    void operator()(xsltSecurityPrefsPtr preferences) const { xsltFreeSecurityPrefs(preferences); }
};

template <class T> using TXmlPointer = std::unique_ptr<T, TXmlDeleter>;

QByteArray LocalPath(const QString& path)
{
    return QFile::encodeName(ToPlatformPath(path));
}

int MayRead(xsltSecurityPrefsPtr, xsltTransformContextPtr, const char* path)
{
    return TFileAccessPolicy::Current() && TFileAccessPolicy::Current()->MayRead(path) ? 1 : 0;
}

TXmlPointer<xsltSecurityPrefs> MakePreferences()
{
    TXmlPointer<xsltSecurityPrefs> preferences(xsltNewSecurityPrefs());
    xsltSetSecurityPrefs(preferences.get(), XSLT_SECPREF_READ_FILE, MayRead);
    for (const xsltSecurityOption forbidden : {XSLT_SECPREF_WRITE_FILE, XSLT_SECPREF_CREATE_DIRECTORY,
                                               XSLT_SECPREF_READ_NETWORK, XSLT_SECPREF_WRITE_NETWORK})
        xsltSetSecurityPrefs(preferences.get(), forbidden, xsltSecurityForbid);
    return preferences;
}

// The preferences hold for everything that the library loads while they live, also where there is no context yet.
class TDefaultPreferences
{
public:
    TDefaultPreferences() : m_preferences(MakePreferences()), m_previous(xsltGetDefaultSecurityPrefs())
    {
        xsltSetDefaultSecurityPrefs(m_preferences.get());
    }
    ~TDefaultPreferences() { xsltSetDefaultSecurityPrefs(m_previous); }
    TDefaultPreferences(const TDefaultPreferences&) = delete;
    TDefaultPreferences& operator=(const TDefaultPreferences&) = delete;

    xsltSecurityPrefsPtr Get() const { return m_preferences.get(); }

private:
    TXmlPointer<xsltSecurityPrefs> m_preferences;
    xsltSecurityPrefsPtr m_previous;
};

// Lets nothing more be done: neither an instruction nor a step of a path.
void Stop(xsltTransformContextPtr context)
{
    context->state = XSLT_STATE_STOPPED;
    context->xpathCtxt->opCount = context->xpathCtxt->opLimit;
}

// Null when the stylesheet gave up, or was stopped, on the way.
TXmlPointer<xmlDoc> Apply(xsltStylesheetPtr style, xmlDocPtr menu, xsltSecurityPrefsPtr preferences,
                          TXmlMemoryLimit& memory)
{
    const TXmlPointer<xsltTransformContext> context(xsltNewTransformContext(style, menu));
    if (!context || memory.IsPassed() || xsltSetCtxtSecurityPrefs(preferences, context.get()) != 0)
        return nullptr;
    context->opLimit = InstructionLimit;
    context->xpathCtxt->opLimit = PathStepLimit;
    memory.SetStop([&context] { Stop(context.get()); });
    const auto forgetStop = qScopeGuard([&memory] { memory.SetStop({}); });
    const char* noParameters[] = {nullptr};
    TXmlPointer<xmlDoc> result(xsltApplyStylesheetUser(style, menu, noParameters, nullptr, nullptr, context.get()));
    if (context->state != XSLT_STATE_OK || memory.IsPassed())
        return nullptr;
    return result;
}

int AppendTo(void* device, const char* text, int length)
{
    return static_cast<int>(static_cast<QIODevice*>(device)->write(text, length));
}

int KeepDeviceOpen(void*)
{
    return 0;
}

// As the library saves to a file, in the encoding that the stylesheet asks for.
int Serialize(xmlDocPtr result, xsltStylesheetPtr style, QIODevice& device)
{
    const xmlChar* encoding = nullptr;
    XSLT_GET_IMPORT_PTR(encoding, style, encoding)
    xmlCharEncodingHandlerPtr encoder =
        encoding ? xmlFindCharEncodingHandler(reinterpret_cast<const char*>(encoding)) : nullptr;
    if (encoder && qstricmp(encoder->name, "UTF-8") == 0)
        encoder = nullptr;
    xmlOutputBufferPtr buffer = xmlOutputBufferCreateIO(AppendTo, KeepDeviceOpen, &device, encoder);
    const int saved = xsltSaveResultTo(buffer, result, style);
    const int closed = xmlOutputBufferClose(buffer);
    return saved < 0 ? saved : closed;
}

int Save(xmlDocPtr result, xsltStylesheetPtr style, const QString& outputPath)
{
    if (!result->children)
        return 0;
    if (outputPath.startsWith(u"stdout", Qt::CaseInsensitive)) {
        QFile output;
        return output.open(stdout, QIODevice::WriteOnly) ? Serialize(result, style, output) : -1;
    }
    TFileReplacer replacer(outputPath);
    const int code = Serialize(result, style, replacer.Device());
    if (code >= 0)
        replacer.Commit();
    return code;
}

// What one run has made; the stylesheet says how the result is written. Freed in the opposite order, the latest first.
struct TRun
{
    TXmlPointer<xsltStylesheet> Style;
    TXmlPointer<xmlDoc> Menu;
    TXmlPointer<xmlDoc> Result; // null for a failure
    bool LackedMemory = false;
};

TRun RunStylesheet(const TMenuTransformation& transformation)
{
    TXmlMemoryLimit memory(transformation.MemoryLimit);
    const TDefaultPreferences preferences;
    const QByteArray stylePath = LocalPath(transformation.StylePath);
    const QByteArray menuPath = LocalPath(transformation.MenuPath);
    // Stays on in the process; readers have options of their own.
    xmlSubstituteEntitiesDefault(1);
    TRun run;
    run.Style.reset(xsltParseStylesheetFile(reinterpret_cast<const xmlChar*>(stylePath.constData())));
    TFileAccessPolicy::ExpectDocument();
    run.Menu.reset(xmlParseFile(menuPath.constData()));
    if (run.Style && run.Menu)
        run.Result = Apply(run.Style.get(), run.Menu.get(), preferences.Get(), memory);
    run.LackedMemory = memory.IsPassed();
    return run;
}

} // namespace

std::size_t DefaultMenuMemory()
{
    constexpr auto Least = std::size_t{2} << 30;
    const long pages = sysconf(_SC_PHYS_PAGES); // -1 where nobody knows
    const auto machine =
        static_cast<std::size_t>(std::max(pages, 0L)) * static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    return std::max(machine / 2, Least);
}

TTransformationOutcome TransformMenu(const TMenuTransformation& transformation)
{
    const TXmlMessages messages;
    const TFileAccessPolicy policy(transformation.ReadableRoots, {transformation.StylePath, transformation.MenuPath});
    const auto cleanUp = qScopeGuard([] { xsltCleanupGlobals(); });
    TTransformationOutcome outcome;
    const TRun run = RunStylesheet(transformation);
    if (run.Result)
        outcome.Saved = Save(run.Result.get(), run.Style.get(), transformation.OutputPath);
    outcome.Reason = run.LackedMemory ? QStringLiteral("Das Stylesheet braucht zu viel Speicher.") : messages.First();
    return outcome;
}

void PrepareMenuDirectory(const QString& directory)
{
    if (DirectoryExists(directory))
        return;
    ForceDirectories(directory);
    const auto part = [](const char* name) { return QString::fromLatin1(name); };
    const QString templates =
        JoinFilePath(ExpandEnvStrings(part("%NORHOME%")),
                     {part("config"), part("lang"), part("shared"), part("templates"), part("kolt"), part("_menu")});
    for (const char* name : {"menu.xsl", "menu.js", "menu.css"}) {
        try {
            CopyFileTo(JoinFilePath(templates, {part(name)}), JoinFilePath(directory, {part(name)}), false);
        } catch (const TFileError&) {
            // A missing template does not keep anybody from exporting.
        }
    }
}
