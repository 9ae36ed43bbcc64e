#pragma once
// The printed form of a text document: pages of the chosen paper with a header band (the
// document's heading and page number) and the text in the detail band, shown in a print
// preview from which it can be printed or written to PDF.

#include <QFont>
#include <QString>
#include <array>
#include <functional>
#include <memory>
#include <vector>

class QPrinter;
class QTextDocument;
class QPrintPreviewDialog;
class QWidget;

namespace zarvion::gui {

//! What a text report prints and how.
struct TextReportSettings {
    //! Margins Left, Right, Top, Bottom [inch], paper (1 Letter, 9 A4), orientation
    //! (1 portrait, 2 landscape).
    std::array<float, 6> pageParameters{0.5f, 0.5f, 1.0f, 1.0f, 1.0f, 1.0f};
    QString heading;
    bool pageNumbers = true;
    int firstPageNumber = 1;
    int alignment = 0; //!< page numbers 0 left, 1 right
    QFont font;        //!< the document's font
};

//! The banded report of one text.
class TextReport {
public:
    TextReport(QString text, TextReportSettings settings);

    //! Paper and orientation of the settings on the printer, which is used whole: the report
    //! places its bands itself, measured from the paper's edge.
    void setUpPrinter(QPrinter& printer) const;
    //! Lays the text out for the printer; returns the number of pages.
    int paginate(QPrinter& printer);
    //! Paints every page onto the printer (the preview's and the print's request).
    void paint(QPrinter& printer);
    //! The page number field of report page `page` (1-based), empty without page numbers.
    QString pageNumberField(int page) const;
    int pageCount() const { return static_cast<int>(m_pages.size()); }

private:
    struct Geometry {
        double left = 0;         //!< left edge of the bands [px]
        double printWidth = 0;   //!< width of the header fields [px]
        double detailWidth = 0;  //!< width of the text field [px]
        double top = 0;          //!< top of the header band [px]
        double headerHeight = 0; //!< [px]
        double bottom = 0;       //!< lowest text line's bottom [px]
    };
    //! One page: the range of layout heights [px] of the text it shows, and the block in
    //! which it begins.
    struct Page {
        double start = 0;
        double end = 0;
        int firstBlock = 0;
    };

    Geometry geometry(const QPrinter& printer) const;
    //! The text laid out for the printer, with the page breaks found.
    std::unique_ptr<QTextDocument> layOutPages(QPrinter& printer);

    QString m_text;
    TextReportSettings m_settings;
    std::vector<Page> m_pages;
};

//! Lets tests and the window tour see each preview dialog and its printer before it is shown;
//! an empty observer restores the plain behaviour.
using PreviewObserver = std::function<void(QPrintPreviewDialog*, QPrinter*)>;
void SetPreviewObserver(PreviewObserver observer);

//! Shows the print preview of text with the settings and waits until it is closed. When the
//! printer's paper was changed there to something else than the chosen paper, says so.
void ShowTextPrintPreview(QWidget* parent, const QString& text, const TextReportSettings& settings);

} // namespace zarvion::gui
