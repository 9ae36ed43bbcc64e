#include "textdocs/RES_PAGESETUP.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPrinterInfo>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QVBoxLayout>

#include "platform/Frame.h"
#include "platform/MessageBox.h"
#include "platform/NamedControl.h"
#include "shell/SessionState.h"
#include "shell/TextFormat.h"
#include "textdocs/PageSetup.h"
#include "textdocs/RES_ShowFile.h"

namespace zarvion::gui {

namespace {

RES_PAGESETUP* g_instance = nullptr;

//! The paper of the page parameters starts as the default printer's when it is Letter or A4.
void takePaperFromPrinterOnce()
{
    static bool done = false;
    if (done)
        return;
    done = true;
    const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
    if (!printer.isNull() && printer.defaultPageSize().id() == QPageSize::A4)
        shell::Session().PageParameters[4] = static_cast<float>(textdocs::PaperA4);
}

} // namespace

RES_PAGESETUP* RES_PAGESETUP::Instance()
{
    return g_instance;
}

RES_PAGESETUP* RES_PAGESETUP::Open(RES_ShowFile* document)
{
    if (!document)
        return nullptr;
    if (g_instance)
        g_instance->close();
    QWidget* owner = Frame() ? Frame()->FrameWidget() : document->window();
    auto* dialog = new RES_PAGESETUP(document, owner);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setWindowModality(Qt::ApplicationModal);
    dialog->show();
    dialog->raise();
    dialog->activateWindow();
    return dialog;
}

RES_PAGESETUP::RES_PAGESETUP(RES_ShowFile* document, QWidget* parent)
    : QDialog(parent), m_document(document)
{
    setObjectName(QStringLiteral("RES_PAGESETUP"));
    setWindowTitle(QStringLiteral("Text Editor Print"));
    g_instance = this;
    takePaperFromPrinterOnce();
    buildUi();
    fill();
    if (QScreen* screen = QApplication::primaryScreen()) {
        const QRect r = screen->availableGeometry();
        move(r.left() + r.width() / 10, r.top() + r.height() / 7);
    }
}

RES_PAGESETUP::~RES_PAGESETUP()
{
    if (g_instance == this)
        g_instance = nullptr;
}

void RES_PAGESETUP::buildUi()
{
    auto box = [this](const char* name, int width) {
        auto* b = NamedControl<QLineEdit>(name, this);
        if (width > 0) {
            b->setFixedWidth(width);
            b->setAlignment(Qt::AlignRight);
        }
        return b;
    };
    const char* marginNames[4] = {"Left", "Right", "Top", "Bottom"};
    auto* margins = new QGroupBox(QStringLiteral("Margins (inchs)"), this);
    auto* ml = new QFormLayout(margins);
    for (int k = 0; k < 4; ++k) {
        Text1[k] = box(QStringLiteral("Text1_%1").arg(k).toLatin1().constData(), 70);
        ml->addRow(QString::fromLatin1(marginNames[k]), Text1[k]);
    }

    auto* numbers = new QGroupBox(QStringLiteral("Page Numbers"), this);
    auto* nl = new QFormLayout(numbers);
    Check1 = NamedControl<QCheckBox>("Check1", QStringLiteral("Page Numbers"), numbers);
    Text3 = box("Text3", 70);
    Combo1 = NamedControl<QComboBox>("Combo1", numbers);
    Combo1->addItems({QStringLiteral(" Left Justify "), QStringLiteral(" Right Justify ")});
    nl->addRow(Check1);
    nl->addRow(QStringLiteral("First page number"), Text3);
    nl->addRow(QStringLiteral("Position"), Combo1);
    connect(Check1, &QCheckBox::toggled, this, [this](bool on) {
        Text3->setEnabled(on);
        Combo1->setEnabled(on);
    });

    auto* paper = new QGroupBox(QStringLiteral("Paper"), this);
    auto* pl = new QVBoxLayout(paper);
    Combo2 = NamedControl<QComboBox>("Combo2", paper);
    Combo2->addItems({QStringLiteral(" Letter, 8 1/2 x 11 in"), QStringLiteral(" A4, 210 x 297 mm")});
    Option1 = NamedControl<QRadioButton>("Option1", QStringLiteral("Portrait "), paper);
    Option2 = NamedControl<QRadioButton>("Option2", QStringLiteral("Landscape "), paper);
    auto* orientation = new QHBoxLayout;
    orientation->addWidget(Option1);
    orientation->addWidget(Option2);
    orientation->addStretch();
    pl->addWidget(Combo2);
    pl->addLayout(orientation);

    Text4 = box("Text4", 0);
    auto* heading = new QHBoxLayout;
    heading->addWidget(new QLabel(QStringLiteral("Page heading"), this));
    heading->addWidget(Text4, 1);

    Label1 = NamedControl<QLabel>("Label1", this);
    Label1->setWordWrap(true);
    Command5 = CommandButton("Command5", QStringLiteral("Print Preview"), this);
    Command5->setDefault(true);
    Command3 = CommandButton("Command3", QStringLiteral("Cancel"), this);
    connect(Command5, &QPushButton::clicked, this, &RES_PAGESETUP::PrintPreview);
    connect(Command3, &QPushButton::clicked, this, &QDialog::reject);

    auto* right = new QVBoxLayout;
    right->addWidget(numbers);
    right->addWidget(paper);
    auto* groups = new QHBoxLayout;
    groups->addWidget(margins);
    groups->addLayout(right, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command5);
    buttons->addWidget(Command3);
    auto* root = new QVBoxLayout(this);
    root->addLayout(groups);
    root->addLayout(heading);
    root->addWidget(Label1);
    root->addLayout(buttons);
    setMinimumWidth(520);
}

void RES_PAGESETUP::fill()
{
    const auto& p = shell::Session().PageParameters;
    for (int k = 0; k < 4; ++k)
        Text1[k]->setText(toQt(textdocs::MarginText(p[static_cast<std::size_t>(k)])));
    Combo2->setCurrentIndex(static_cast<int>(p[4]) == textdocs::PaperA4 ? 1 : 0);
    (static_cast<int>(p[5]) == textdocs::Landscape ? Option2 : Option1)->setChecked(true);
    Combo1->setCurrentIndex(shell::Session().PageNumberAlignment == 1 ? 1 : 0);
    QString heading;
    bool pageNumbers = true;
    int first = 1;
    bool selection = false;
    if (m_document) {
        m_document->Get_Page_SetUp(heading, pageNumbers, first);
        selection = m_document->SelZxBB();
    }
    Text4->setText(heading.isNull() ? QString() : heading);
    Check1->setChecked(pageNumbers);
    Text3->setEnabled(pageNumbers);
    Combo1->setEnabled(pageNumbers);
    Text3->setText(QString::number(first));
    Label1->setText(toQt(textdocs::PageSetupNote(selection)));
}

void RES_PAGESETUP::PrintPreview()
{
    textdocs::PageSetupInput input;
    for (int k = 0; k < 4; ++k)
        input.margins[static_cast<std::size_t>(k)] = fromQt(Text1[k]->text());
    input.firstPageNumber = shell::Trim(fromQt(Text3->text()));
    input.paper = Combo2->currentIndex() == 1 ? textdocs::PaperA4 : textdocs::PaperLetter;
    input.orientation = Option2->isChecked() ? textdocs::Landscape : textdocs::Portrait;
    const textdocs::PageSetupResult result = textdocs::ValidatePageSetup(input);
    if (result.parametersSet)
        shell::Session().PageParameters = result.pageParameters;
    if (!result.ok) {
        const int field = static_cast<int>(result.field);
        QLineEdit* box = field >= 0 && field < 4 ? Text1[static_cast<std::size_t>(field)] : Text3;
        ShowFieldError(toQt(result.message.text), box);
        return;
    }
    shell::Session().PageNumberAlignment = Combo1->currentIndex();
    const int first = input.firstPageNumber.empty()
                          ? 1
                          : static_cast<int>(shell::ToDouble(input.firstPageNumber).value_or(1.0));
    QPointer<RES_ShowFile> document = m_document;
    if (document)
        document->Set_Page_SetUp(Text4->text(), Check1->isChecked(), first);
    close();
    if (document)
        document->Print_Rch();
}

void RES_PAGESETUP::hideEvent(QHideEvent* event)
{
    if (g_instance == this)
        g_instance = nullptr;
    QDialog::hideEvent(event);
}

} // namespace zarvion::gui
