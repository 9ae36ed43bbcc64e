#pragma once
// The find and replace dialog: gathers the search options and drives the search of the
// active text window, which keeps the search position.

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QPushButton;

namespace zarvion::gui {

class RES_ShowFile;

//! `RES_FIND`: small, non-modal, topmost.
class RES_FIND : public QDialog {
    Q_OBJECT
public:
    //! Closes any earlier instance and opens the dialog on the active text window.
    static RES_FIND* Open();
    //! The open instance, or nullptr.
    static RES_FIND* Instance();

    //! A solver document is read only: Replace, Replace All and the replacement field go off.
    void IsSol(bool flag);

    QLineEdit* Text1 = nullptr;
    QLineEdit* Text2 = nullptr;
    QCheckBox* Check1 = nullptr;
    QCheckBox* Check2 = nullptr;
    QPushButton* Command1 = nullptr;
    QPushButton* Command3 = nullptr;
    QPushButton* Command4 = nullptr;
    QPushButton* Command2 = nullptr;

private:
    explicit RES_FIND(QWidget* parent);
    ~RES_FIND() override;
    int options() const;
    RES_ShowFile* target() const;
    void findNext();
    void replace();
    void replaceAll();
};

//! The active text window of the frame, or nullptr.
RES_ShowFile* ActiveTextDocument();

} // namespace zarvion::gui
