// The print preview of a text document lays out and paints every page before it shows the
// first. Measured on the solved GRI-Mech 3.0 sample (1.36 MB, 3964 lines, result records of
// 926 characters that wrap), 11 pt monospaced text on Letter with the default margins:
//   BM_PaginateText/n  page breaks of the first n lines
//   BM_PaintTextPdf/n  page breaks and painting of the first n lines into a PDF printer, as
//                      the preview's print to a PDF file does
// The argument doubles, so the time should double with it.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QPrinter>
#include <QStringList>
#include <QTemporaryDir>

#include "textdocs/TextReport.h"

namespace {

using zarvion::gui::TextReport;
using zarvion::gui::TextReportSettings;

QString firstLines(int n)
{
    static const QStringList lines = [] {
        QFile f(QStringLiteral(ZARVION_BIN_DIR "/Samples/gri30_solved.txt"));
        f.open(QIODevice::ReadOnly);
        return QString::fromLatin1(f.readAll()).remove('\r').split('\n');
    }();
    return lines.mid(0, n).join('\n');
}

TextReportSettings settings()
{
    TextReportSettings s;
    s.heading = QStringLiteral("gri30_solved.txt");
    s.font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    s.font.setPointSize(11);
    return s;
}

void BM_PaginateText(benchmark::State& state)
{
    TextReport report(firstLines(static_cast<int>(state.range(0))), settings());
    QPrinter printer(QPrinter::HighResolution);
    report.setUpPrinter(printer);
    int pages = 0;
    for (auto _ : state)
        pages = report.paginate(printer);
    state.counters["pages"] = pages;
}
BENCHMARK(BM_PaginateText)->RangeMultiplier(2)->Range(500, 4000)->Unit(benchmark::kMillisecond);

void BM_PaintTextPdf(benchmark::State& state)
{
    QTemporaryDir dir;
    TextReport report(firstLines(static_cast<int>(state.range(0))), settings());
    for (auto _ : state) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(dir.filePath(QStringLiteral("text.pdf")));
        report.setUpPrinter(printer);
        report.paint(printer);
    }
    state.counters["pages"] = report.pageCount();
}
BENCHMARK(BM_PaintTextPdf)->RangeMultiplier(2)->Range(500, 4000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
