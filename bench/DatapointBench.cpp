#include "DatapointBrowser.h"
#include "Datapoints.h"
#include "ImportDialog.h"
#include "Measures.h"
#include "Vlapputils.h"

#include <QApplication>
#include <QByteArray>
#include <QLineEdit>
#include <QTreeView>
#include <QTemporaryDir>
#include <QTimer>

#include <functional>

namespace
{

constexpr int LastAddress = 65535;
constexpr double LimitMilliseconds = 1000;
constexpr double LimitKeyStroke = 50;

QByteArray AddressOf(int value)
{
    return QByteArray::number(value >> 11) + '/' + QByteArray::number(value >> 8 & 7) + '/' +
           QByteArray::number(value & 255);
}

QByteArray NameOf(int value)
{
    return "Deckenlicht K\xC3\xBC"
           "che " +
           QByteArray::number(value) + " schalten";
}

// Every address that the bus has, a line each.
QByteArray AllAddresses(const std::function<QByteArray(int value)>& line)
{
    QByteArray text;
    for (int value = 1; value <= LastAddress; ++value)
        text += line(value);
    return text;
}

QByteArray EsfFile()
{
    return "Haus\r\n" + AllAddresses([](int value) {
               return "Erdgeschoss.Licht." + AddressOf(value) + '\t' + NameOf(value) +
                      "\tEIS 1 'Schalten' (1 Bit)\tLow\t\r\n";
           });
}

QByteArray XmlFile()
{
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\r\n"
           "<GroupAddress-Export xmlns=\"http://knx.org/xml/ga-export/01\">\r\n"
           "<GroupRange Name=\"Erdgeschoss\"><GroupRange Name=\"Licht\">\r\n" +
           AllAddresses([](int value) {
               return "<GroupAddress Name=\"" + NameOf(value) + "\" Address=\"" + AddressOf(value) +
                      "\" DPTs=\"DPST-1-1\" />\r\n";
           }) +
           "</GroupRange></GroupRange></GroupAddress-Export>\r\n";
}

QByteArray CsvFile()
{
    return "\"Group name\";\"Address\";\"Central\";\"Unfiltered\";\"Description\";\"DatapointType\";\"Security\"\r\n" +
           AllAddresses([](int value) {
               return '"' + NameOf(value) + "\";\"" + AddressOf(value) + "\";\"\";\"\";\"\";\"DPST-1-1\";\"Auto\"\r\n";
           });
}

template <QByteArray (*MakeFile)()> void Import(benchmark::State& state)
{
    const QByteArray content = MakeFile();
    for ([[maybe_unused]] auto _ : state) {
        if (ReadDatapoints(dkEib, content).Datapoints.size() != LastAddress)
            state.SkipWithError("not every address was read");
    }
}

struct TKeyStroke
{
    QString Before;
    QString After;
    bool IsOpen = false; // all groups were open and an address selected before
};

// A shown browser with every address that the bus has.
void FilterAddresses(benchmark::State& state, const TKeyStroke& stroke)
{
    const QTemporaryDir directory;
    TDatapointBrowser browser(dkEib, nullptr);
    browser.Store().Load(directory.path());
    browser.Store().Import(QStringLiteral("haus.esf"), EsfFile(), {}, {});
    browser.ShowStore();
    browser.resize(800, 600);
    browser.show();
    if (stroke.IsOpen) {
        browser.View()->expandAll();
        browser.View()->setCurrentIndex(browser.View()->indexBelow(
            browser.View()->indexBelow(browser.View()->indexBelow(browser.View()->model()->index(0, 0)))));
    }
    browser.FilterLine()->setText(stroke.Before);
    QApplication::processEvents();
    for ([[maybe_unused]] auto _ : state) {
        browser.FilterLine()->setText(stroke.After);
        QApplication::processEvents();
    }
}

void FilterWide(benchmark::State& state)
{
    FilterAddresses(state, {.Before = QString(), .After = QStringLiteral("k")});
}

void FilterNarrow(benchmark::State& state)
{
    FilterAddresses(state, {.Before = QStringLiteral("küche 6553"), .After = QStringLiteral("küche 65535")});
}

void FilterOpenGroups(benchmark::State& state)
{
    FilterAddresses(state, {.Before = QString(), .After = QStringLiteral("k"), .IsOpen = true});
}

void FilterTakenAway(benchmark::State& state)
{
    FilterAddresses(state, {.Before = QStringLiteral("küche 65535"), .After = QString(), .IsOpen = true});
}

// Reads and shows a file that is to be imported over one with every address.
template <QByteArray (*MakeFile)()> void Preview(benchmark::State& state)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("haus.esf"));
    WriteFile(path, MakeFile());
    TDatapointStore store(dkEib);
    store.Load(directory.path());
    store.Import(QStringLiteral("haus.esf"), EsfFile(), {}, {});
    for ([[maybe_unused]] auto _ : state) {
        TImportDialog dialog(store, path, nullptr);
        QTimer::singleShot(0, &dialog, &QDialog::reject);
        dialog.Execute();
    }
}

// Nothing in it can be read.
QByteArray BadFile()
{
    return "Haus\r\nA.B.1/1/1\tx\tUnbekannt\r\n" +
           AllAddresses([](int) { return QByteArray("A.B.99/1/1\tx\tUnbekannt\r\n"); });
}

} // namespace

void AddDatapointMeasures()
{
    AddMilliseconds("import 65535 group addresses (ESF)", LimitMilliseconds, Import<EsfFile>);
    AddMilliseconds("import 65535 group addresses (XML)", LimitMilliseconds, Import<XmlFile>);
    AddMilliseconds("import 65535 group addresses (CSV)", LimitMilliseconds, Import<CsvFile>);
    AddMilliseconds("preview 65535 group addresses", LimitMilliseconds, Preview<EsfFile>);
    AddMilliseconds("preview 65535 unreadable lines", LimitMilliseconds, Preview<BadFile>);
    AddMilliseconds("filter 65535 addresses, all match", LimitKeyStroke, FilterWide);
    AddMilliseconds("filter 65535 addresses, one matches", LimitKeyStroke, FilterNarrow);
    AddMilliseconds("filter 65535 addresses, all match, groups open", LimitKeyStroke, FilterOpenGroups);
    AddMilliseconds("take the filter away, groups open", LimitKeyStroke, FilterTakenAway);
}
