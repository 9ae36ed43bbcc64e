#pragma once
// The print set-up of a text document: margins, heading, page numbers, paper and orientation,
// checked, then the print preview of the document or of its selection.

#include <QDialog>
#include <QPointer>
#include <array>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace zarvion::gui {

class RES_ShowFile;

//! `RES_PAGESETUP`, title "Text Editor Print".
class RES_PAGESETUP : public QDialog {
    Q_OBJECT
public:
    explicit RES_PAGESETUP(RES_ShowFile* document, QWidget* parent = nullptr);
    ~RES_PAGESETUP() override;

    //! Opens the set-up of a text window, modal to the program, and returns at once.
    static RES_PAGESETUP* Open(RES_ShowFile* document);
    //! The open set-up dialog, or nullptr.
    static RES_PAGESETUP* Instance();

    //! `Command5` "Print Preview": checks the fields, stores the settings, shows the preview.
    void PrintPreview();

    std::array<QLineEdit*, 4> Text1{}; //!< margins Left, Right, Top, Bottom [inch]
    QLineEdit* Text4 = nullptr;        //!< page heading
    QCheckBox* Check1 = nullptr;       //!< "Page Numbers"
    QLineEdit* Text3 = nullptr;        //!< first page number
    QComboBox* Combo1 = nullptr;       //!< alignment of the page numbers
    QComboBox* Combo2 = nullptr;       //!< paper
    QRadioButton* Option1 = nullptr;   //!< "Portrait "
    QRadioButton* Option2 = nullptr;   //!< "Landscape "
    QPushButton* Command5 = nullptr;
    QPushButton* Command3 = nullptr;
    QLabel* Label1 = nullptr;          //!< the note on what will be printed

protected:
    void hideEvent(QHideEvent* event) override;

private:
    void buildUi();
    void fill();

    QPointer<RES_ShowFile> m_document;
};

} // namespace zarvion::gui
