#include "textdocs/RES_FIND.h"

#include <QApplication>
#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

#include "platform/Frame.h"
#include "textdocs/RES_ShowFile.h"

namespace zarvion::gui {

namespace {
RES_FIND* g_instance = nullptr;
}

RES_ShowFile* ActiveTextDocument()
{
    if (!Frame())
        return nullptr;
    const QList<QWidget*> children = Frame()->Children();
    // Children() lists the active child first.
    for (QWidget* w : children) {
        if (auto* doc = qobject_cast<RES_ShowFile*>(w))
            return doc;
        break;
    }
    return nullptr;
}

RES_FIND* RES_FIND::Instance()
{
    return g_instance;
}

RES_FIND* RES_FIND::Open()
{
    if (g_instance) {
        g_instance->close();
        g_instance = nullptr;
    }
    auto* dialog = new RES_FIND(Frame() ? Frame()->FrameWidget() : nullptr);
    g_instance = dialog;
    if (QScreen* screen = QApplication::primaryScreen()) {
        const QRect r = screen->availableGeometry();
        dialog->move(r.left() + r.width() / 10, r.top() + r.height() / 7);
    }
    if (RES_ShowFile* doc = ActiveTextDocument()) {
        dialog->Text1->setText(doc->box()->textCursor().selectedText());
        dialog->IsSol(doc->GetIsSolFile());
    }
    dialog->Text1->selectAll();
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
    dialog->Text1->setFocus();
    return dialog;
}

RES_FIND::RES_FIND(QWidget* parent) : QDialog(parent, Qt::Tool | Qt::WindowStaysOnTopHint)
{
    setObjectName(QStringLiteral("RES_FIND"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Find"));
    auto* grid = new QGridLayout;
    Text1 = new QLineEdit;
    Text2 = new QLineEdit;
    Text1->setMinimumWidth(260);
    auto* l1 = new QLabel(tr("Find What:"));
    auto* l2 = new QLabel(tr("Replace With:"));
    l1->setBuddy(Text1);
    l2->setBuddy(Text2);
    grid->addWidget(l1, 0, 0);
    grid->addWidget(Text1, 0, 1);
    grid->addWidget(l2, 1, 0);
    grid->addWidget(Text2, 1, 1);
    Check1 = new QCheckBox(tr("Find Whole Word Only"));
    Check2 = new QCheckBox(tr("Match Case"));
    grid->addWidget(Check1, 2, 1);
    grid->addWidget(Check2, 3, 1);

    auto* buttons = new QVBoxLayout;
    Command1 = new QPushButton(tr("Find Next"));
    Command3 = new QPushButton(tr("Replace"));
    Command4 = new QPushButton(tr("Replace All"));
    Command2 = new QPushButton(tr("Cancel"));
    Command1->setDefault(true);
    for (QPushButton* b : {Command1, Command3, Command4, Command2})
        buttons->addWidget(b);
    buttons->addStretch();
    auto* top = new QHBoxLayout(this);
    top->addLayout(grid, 1);
    top->addSpacing(8);
    top->addLayout(buttons);
    connect(Command1, &QPushButton::clicked, this, &RES_FIND::findNext);
    connect(Command3, &QPushButton::clicked, this, &RES_FIND::replace);
    connect(Command4, &QPushButton::clicked, this, &RES_FIND::replaceAll);
    connect(Command2, &QPushButton::clicked, this, &QDialog::close);
    setFixedSize(sizeHint());
}

RES_FIND::~RES_FIND()
{
    if (g_instance == this)
        g_instance = nullptr;
}

void RES_FIND::IsSol(bool flag)
{
    Command3->setEnabled(!flag);
    Command4->setEnabled(!flag);
    Text2->setEnabled(!flag);
}

int RES_FIND::options() const
{
    return (Check1->isChecked() ? 2 : 0) + (Check2->isChecked() ? 4 : 0);
}

RES_ShowFile* RES_FIND::target() const
{
    return ActiveTextDocument();
}

void RES_FIND::findNext()
{
    if (Text1->text().isEmpty())
        return;
    if (RES_ShowFile* doc = target())
        doc->Find_Rich(Text1->text(), options(), true);
}

void RES_FIND::replace()
{
    const QString replacement = Text2->text();
    findNext();
    if (RES_ShowFile* doc = target())
        doc->Replace_Rich(replacement);
}

void RES_FIND::replaceAll()
{
    if (Text1->text().isEmpty())
        return;
    if (RES_ShowFile* doc = target())
        doc->Replace_ALL(Text1->text(), Text2->text(), options());
}

} // namespace zarvion::gui
