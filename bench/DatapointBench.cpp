#include "DatapointBrowser.h"
#include "Datapoints.h"
#include "Measures.h"
#include "Vlapputils.h"

#include <QApplication>
#include <QByteArray>
#include <QLineEdit>
#include <QTemporaryDir>

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

// A shown browser with every address that the bus has.
void FilterAddresses(benchmark::State& state, const QString& before, const QString& after)
{
    const QTemporaryDir directory;
    TDatapointBrowser browser(dkEib, nullptr);
    browser.Store().Load(directory.path());
    browser.Store().Import(QStringLiteral("haus.esf"), EsfFile(), {}, {});
    browser.ShowStore();
    browser.resize(800, 600);
    browser.show();
    browser.FilterLine()->setText(before);
    QApplication::processEvents();
    for ([[maybe_unused]] auto _ : state) {
        browser.FilterLine()->setText(after);
        QApplication::processEvents();
    }
}

void FilterWide(benchmark::State& state)
{
    FilterAddresses(state, QString(), QStringLiteral("k"));
}

void FilterNarrow(benchmark::State& state)
{
    FilterAddresses(state, QStringLiteral("küche 6553"), QStringLiteral("küche 65535"));
}

} // namespace

void AddDatapointMeasures()
{
    AddMilliseconds("import 65535 group addresses (ESF)", LimitMilliseconds, Import<EsfFile>);
    AddMilliseconds("import 65535 group addresses (XML)", LimitMilliseconds, Import<XmlFile>);
    AddMilliseconds("import 65535 group addresses (CSV)", LimitMilliseconds, Import<CsvFile>);
    AddMilliseconds("filter 65535 addresses, all match", LimitKeyStroke, FilterWide);
    AddMilliseconds("filter 65535 addresses, one matches", LimitKeyStroke, FilterNarrow);
}
