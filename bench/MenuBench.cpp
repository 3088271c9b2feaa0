#include "Formatting.h"
#include "IMenuTree.h"
#include "Measures.h"
#include "MenuExport.h"
#include "Vlapputils.h"
#include "Vlfilereplacer.h"

#include <QApplication>
#include <QBuffer>
#include <QProcess>
#include <QTemporaryDir>

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <memory>

namespace
{

constexpr int MainItems = 10'000;
constexpr int SubItems = 10;
constexpr int Links = 100'000;

template <class TWrite> QByteArray Document(TWrite write)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    TLineWriter writer(buffer);
    writer.Write("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\r\n");
    write(writer);
    return buffer.data();
}

void WriteMenuDocument(TLineWriter& writer)
{
    writer.Write("<menu version=\"0.1\" levels=\"2\" logo=\"\" helpbase=\"\">\r\n");
    for (int i = 0; i < MainItems; ++i) {
        writer.Write("<menuitem id=\"mi%d\" class=\"main\" caption=\"Gebäude %d\" title=\"Übersicht %d\" "
                     "link=\"/seiten/gebaeude_%d.html\" help=\"\" access=\"0\" >\r\n",
                     i * (SubItems + 1), i, i, i);
        for (int k = 0; k < SubItems; ++k) {
            writer.Write("<menuitem id=\"mi%d\" class=\"sub\" caption=\"Raum %d\" title=\"\" "
                         "link=\"/seiten/raum_%d_%d.html\" help=\"/hilfe/raum.html\" access=\"5\" />\r\n",
                         i * (SubItems + 1) + k + 1, k, i, k);
        }
        writer.Write("</menuitem>\r\n");
    }
    writer.Write("</menu>\r\n");
}

void WriteLinksDocument(TLineWriter& writer)
{
    writer.Write("<links>\r\n");
    for (int i = 0; i < Links; ++i) {
        writer.Write("<link id=\"lk%d\" class=\"link\" name=\"%d/%d/%d\" alias=\"Licht Büro %d\" value=\"1\" href=\"\" "
                     "target=\"eib\" eis=\"1\" access=\"0\" />\r\n",
                     i, i >> 11 & 31, i >> 8 & 7, i & 255, i);
    }
    writer.Write("</links>\r\n");
}

// The documents and the product's stylesheet, made when they are first needed.
class TMenuFiles
{
public:
    TMenuFiles()
    {
        WriteFile(Path("menu.xml"), Document(WriteMenuDocument));
        WriteFile(Path("dplinks.xml"), Document(WriteLinksDocument));
        CopyFileTo(QStringLiteral(VELMORA_EXAMPLES "/home/config/lang/shared/templates/kolt/_menu/menu.xsl"),
                   Path("menu.xsl"), false);
    }

    QString Directory() const { return m_directory.path(); }
    QString Path(const char* name) const { return m_directory.filePath(QString::fromLatin1(name)); }

private:
    QTemporaryDir m_directory;
};

const TMenuFiles& Files()
{
    static const TMenuFiles files;
    return files;
}

std::unique_ptr<TMenuTreeFrame> ShownFrame()
{
    auto frame = std::make_unique<TMenuTreeFrame>();
    frame->resize(400, 800);
    frame->show();
    QApplication::processEvents();
    return frame;
}

void LoadMenu(benchmark::State& state)
{
    const std::unique_ptr<TMenuTreeFrame> frame = ShownFrame();
    for ([[maybe_unused]] auto _ : state) {
        frame->LoadMenu(Files().Path("menu.xml"));
        QApplication::processEvents();
    }
}

void LoadLinks(benchmark::State& state)
{
    const std::unique_ptr<TMenuTreeFrame> frame = ShownFrame();
    for ([[maybe_unused]] auto _ : state) {
        frame->LoadLinks(Files().Path("dplinks.xml"));
        QApplication::processEvents();
    }
}

template <const char* Name> void Parse(benchmark::State& state)
{
    const QByteArray path = Files().Path(Name).toLocal8Bit();
    for ([[maybe_unused]] auto _ : state) {
        xmlDocPtr document = xmlParseFile(path.constData());
        benchmark::DoNotOptimize(document);
        xmlFreeDoc(document);
    }
}

constexpr char MenuName[] = "menu.xml";
constexpr char LinksName[] = "dplinks.xml";

void WriteMenu(benchmark::State& state)
{
    const std::unique_ptr<TMenuTreeFrame> frame = ShownFrame();
    frame->LoadMenu(Files().Path(MenuName));
    for ([[maybe_unused]] auto _ : state) {
        TFileReplacer replacer(Files().Path("written.xml"));
        frame->SaveToStream(replacer.Device());
        replacer.Commit();
    }
}

void SaveMenu(benchmark::State& state)
{
    xmlDocPtr document = xmlParseFile(Files().Path(MenuName).toLocal8Bit().constData());
    const QByteArray target = Files().Path("saved.xml").toLocal8Bit();
    for ([[maybe_unused]] auto _ : state)
        xmlSaveFile(target.constData(), document);
    xmlFreeDoc(document);
}

void Export(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        const TTransformationOutcome outcome = TransformMenu({.StylePath = Files().Path("menu.xsl"),
                                                              .MenuPath = Files().Path(MenuName),
                                                              .OutputPath = Files().Path("menu.html"),
                                                              .ReadableRoots = {Files().Directory()}});
        if (outcome.Saved < 0)
            state.SkipWithError("the export failed");
    }
}

void ExportByProgram(benchmark::State& state)
{
    for ([[maybe_unused]] auto _ : state) {
        const int code = QProcess::execute(QStringLiteral("xsltproc"),
                                           {QStringLiteral("--nonet"), QStringLiteral("-o"), Files().Path("proc.html"),
                                            Files().Path("menu.xsl"), Files().Path(MenuName)});
        if (code != 0)
            state.SkipWithError("xsltproc failed");
    }
}

} // namespace

void AddMenuMeasures()
{
    AddRatio("load a menu of 110000 items : parse", 1.5, LoadMenu, Parse<MenuName>);
    AddRatio("load 100000 links : parse", 1.5, LoadLinks, Parse<LinksName>);
    AddRatio("write a menu of 110000 items : xmlSaveFile", 1.0, WriteMenu, SaveMenu);
    AddRatio("export a menu of 110000 items : xsltproc", 1.1, Export, ExportByProgram);
}
