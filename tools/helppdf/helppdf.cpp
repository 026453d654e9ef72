// Turns the user guide (HTML) into the printable manual (PDF) at build time:
//   helppdf GUIDE.html MANUAL.pdf
// The guide is laid out by QTextDocument, so it keeps to the HTML subset that Qt renders
// (headings, paragraphs, lists, simple tables, images beside the guide). Run it with the
// offscreen platform: it needs fonts, never a display.
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>
#include <QTextDocument>
#include <QUrl>
#include <cstdio>

int main(int argc, char** argv) {
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3) {
        std::fprintf(stderr, "usage: helppdf GUIDE.html MANUAL.pdf\n");
        return 2;
    }
    QFile in(args.at(1));
    if (!in.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "helppdf: cannot read %s: %s\n", qPrintable(args.at(1)),
                     qPrintable(in.errorString()));
        return 1;
    }
    const QString html = QString::fromUtf8(in.readAll());
    if (!html.contains(QLatin1String("<h1"), Qt::CaseInsensitive)) {
        std::fprintf(stderr, "helppdf: %s has no <h1> title: not a guide\n", qPrintable(args.at(1)));
        return 1;
    }

    QTextDocument doc;
    // Pictures of the guide are named relative to it.
    doc.setBaseUrl(QUrl::fromLocalFile(QFileInfo(args.at(1)).absoluteFilePath()));
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(10);
    doc.setDefaultFont(font);
    doc.setHtml(html);

    // Written whole or not at all: a failed run leaves no half manual for the install.
    QSaveFile out(args.at(2));
    if (!out.open(QIODevice::WriteOnly)) {
        std::fprintf(stderr, "helppdf: cannot write %s: %s\n", qPrintable(args.at(2)),
                     qPrintable(out.errorString()));
        return 1;
    }
    {
        QPdfWriter pdf(&out);
        // print() puts its own margin of 2 cm around the text and the page number below it.
        pdf.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF()));
        pdf.setResolution(300);
        pdf.setTitle(doc.metaInformation(QTextDocument::DocumentTitle));
        pdf.setCreator(QStringLiteral("VKM Step"));
        // print() breaks the guide into pages and numbers them at the foot.
        doc.print(&pdf);
    }
    if (!out.commit()) {
        std::fprintf(stderr, "helppdf: cannot write %s: %s\n", qPrintable(args.at(2)),
                     qPrintable(out.errorString()));
        return 1;
    }
    return 0;
}
