#include "textdocs/RES_ShowFile.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QMenu>
#include <QMimeData>
#include <QTextBlock>
#include <QTextDocument>
#include <QVBoxLayout>


#include "platform/FileDialogs.h"
#include "platform/Frame.h"
#include "platform/MessageBox.h"
#include "platform/WaitCursor.h"
#include "shell/AtomicFile.h"
#include "shell/FileGuards.h"
#include "shell/SessionState.h"
#include "shell/TextFile.h"
#include "shell/TextFormat.h"
#include "solverfile/SolverFileChecks.h"
#include "textdocs/RES_FIND.h"
#include "textdocs/RES_PAGESETUP.h"
#include "textdocs/TextDocument.h"
#include "textdocs/TextReport.h"
#include "textdocs/UndoAdapter.h"

namespace zarvion::gui {

namespace {

QFont courierFont(int size)
{
    QFont font(QStringLiteral("Courier New"));
    font.setStyleHint(QFont::Monospace);
    font.setFixedPitch(true);
    if (!QFontInfo(font).fixedPitch())
        font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSize(size);
    return font;
}

const QColor SolverTint(180, 190, 210);

} // namespace

int VirtualKeyCode(int key)
{
    if (key >= Qt::Key_A && key <= Qt::Key_Z)
        return 65 + (key - Qt::Key_A);
    if (key >= Qt::Key_0 && key <= Qt::Key_9)
        return 48 + (key - Qt::Key_0);
    if (key >= Qt::Key_F1 && key <= Qt::Key_F12)
        return 112 + (key - Qt::Key_F1);
    switch (key) {
    case Qt::Key_Shift: return 16;
    case Qt::Key_Control: return 17;
    case Qt::Key_Alt: return 18;
    case Qt::Key_Pause: return 19;
    case Qt::Key_CapsLock: return 20;
    case Qt::Key_Escape: return 27;
    case Qt::Key_PageUp: return 33;
    case Qt::Key_PageDown: return 34;
    case Qt::Key_End: return 35;
    case Qt::Key_Home: return 36;
    case Qt::Key_Left: return 37;
    case Qt::Key_Up: return 38;
    case Qt::Key_Right: return 39;
    case Qt::Key_Down: return 40;
    case Qt::Key_Insert: return 45;
    case Qt::Key_Delete: return 46;
    case Qt::Key_Meta: return 91;
    case Qt::Key_Menu: return 93;
    case Qt::Key_NumLock: return 144;
    case Qt::Key_ScrollLock: return 145;
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Tab: return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter: return 13;
    case Qt::Key_Space: return 32;
    default: return 0;
    }
}

RichTextBox::RichTextBox(QWidget* parent) : QPlainTextEdit(parent)
{
    setObjectName(QStringLiteral("RichTextBox1"));
    setUndoRedoEnabled(false); // snapshot undo does it
}

void RichTextBox::keyPressEvent(QKeyEvent* event)
{
    bool consumed = false;
    emit keyDown(event, consumed);
    if (!consumed)
        QPlainTextEdit::keyPressEvent(event);
}

void RichTextBox::keyReleaseEvent(QKeyEvent* event)
{
    QPlainTextEdit::keyReleaseEvent(event);
    emit keyUp();
}

void RichTextBox::mouseReleaseEvent(QMouseEvent* event)
{
    QPlainTextEdit::mouseReleaseEvent(event);
    emit mouseUp(event->button(), event->globalPosition().toPoint());
}

RES_ShowFile::RES_ShowFile(QWidget* parent) : QWidget(parent)
{
    setObjectName(QStringLiteral("RES_ShowFile"));
    setAttribute(Qt::WA_DeleteOnClose);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    m_box = new RichTextBox(this);
    m_box->setContextMenuPolicy(Qt::NoContextMenu);
    layout->addWidget(m_box);
    m_box->installEventFilter(this);

    m_fontSize = shell::Session().TextSize > 0 ? shell::Session().TextSize : 11;
    m_box->setFont(courierFont(m_fontSize));
    m_box->setLineWrapMode(QPlainTextEdit::WidgetWidth);
    m_printName = toQt(textdocs::DefaultDocumentName(shell::Now()));
    buildMenus();

    m_undo = std::make_unique<UndoAdapter>(m_box, 250, this);
    connect(m_undo.get(), &UndoAdapter::StateChanged, this, [this] {
        m_undoAction->setEnabled(canUndo());
        m_redoAction->setEnabled(canRedo());
        emit commandsChanged();
    });
    connect(m_box, &RichTextBox::keyDown, this, &RES_ShowFile::onKeyDown);
    connect(m_box, &RichTextBox::keyUp, this, [this] {
        m_findPosition = m_box->textCursor().selectionStart();
    });
    connect(m_box, &RichTextBox::mouseUp, this, [this](Qt::MouseButton b, const QPoint& pos) {
        m_findPosition = m_box->textCursor().selectionStart();
        if (b == Qt::RightButton)
            m_popup->popup(pos);
    });
    connect(m_box, &QPlainTextEdit::selectionChanged, this, &RES_ShowFile::updateSelectionCommands);
    updateSelectionCommands();
    m_undoAction->setEnabled(false);
    m_redoAction->setEnabled(false);
}

RES_ShowFile::~RES_ShowFile() = default;

bool RES_ShowFile::canUndo() const
{
    return m_undo && m_undo->canUndo();
}

bool RES_ShowFile::canRedo() const
{
    return m_undo && m_undo->canRedo();
}

void RES_ShowFile::buildMenus()
{
    auto* edit = new QMenu(tr("&Edit"), this);
    m_undoAction = edit->addAction(tr("&Undo"), this, &RES_ShowFile::Rich_Undo);
    m_undoAction->setShortcut(QKeySequence::Undo);
    m_redoAction = edit->addAction(tr("&Redo"), this, &RES_ShowFile::Rich_Redo);
    m_redoAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Y));
    edit->addSeparator();
    m_cutAction = edit->addAction(tr("Cu&t"), this, &RES_ShowFile::TEXT_CUT);
    m_cutAction->setShortcut(QKeySequence::Cut);
    m_copyAction = edit->addAction(tr("&Copy"), this, &RES_ShowFile::TEXT_COPY);
    m_copyAction->setShortcut(QKeySequence::Copy);
    m_pasteAction = edit->addAction(tr("&Paste"), this, &RES_ShowFile::ClipInRich);
    m_pasteAction->setShortcut(QKeySequence::Paste);
    m_deleteAction = edit->addAction(tr("&Delete"), this, &RES_ShowFile::deleteSelection);
    edit->addSeparator();
    QAction* selAll = edit->addAction(tr("Select &All"), this, &RES_ShowFile::selectAll);
    selAll->setShortcut(QKeySequence::SelectAll);
    m_dateAction = edit->addAction(tr("Date/&Time"), this, &RES_ShowFile::DATATIME);
    m_dateAction->setShortcut(QKeySequence(Qt::Key_F5));
    edit->addSeparator();
    QAction* find = edit->addAction(tr("&Find..."), this, [] { RES_FIND::Open(); });
    find->setShortcut(QKeySequence::Find);
    for (QAction* a : edit->actions())
        a->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addActions(edit->actions());

    auto* format = new QMenu(tr("F&ormat"), this);
    m_wrapAction = format->addAction(tr("&Word Wrap"), this, &RES_ShowFile::TXTWORDWRAP);
    m_wrapAction->setCheckable(true);
    m_wrapAction->setChecked(true);
    QMenu* sizes = format->addMenu(tr("Text &Size"));
    const std::pair<const char*, int> sizeItems[3] = {{"&Large", 14}, {"&Medium", 11}, {"&Small", 9}};
    for (int i = 0; i < 3; ++i) {
        const int size = sizeItems[i].second;
        m_sizeActions[i] = sizes->addAction(tr(sizeItems[i].first), this, [this, size] { FntSize(size); });
        m_sizeActions[i]->setCheckable(true);
        m_sizeActions[i]->setChecked(size == m_fontSize);
    }

    m_solverMenu = new QMenu(tr("&Solver"), this);
    m_solverMenu->setObjectName(QStringLiteral("TEXT_SOLVER"));
    m_runSolverAction = m_solverMenu->addAction(tr("&Run Solver"), this, &RES_ShowFile::RunSol);
    m_runSolverAction->setObjectName(QStringLiteral("TXT_RENSOLVER"));
    m_runSolverAction->setShortcut(QKeySequence(Qt::Key_F9));
    m_runSolverAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(m_runSolverAction);
    QMenu* post = m_solverMenu->addMenu(tr("&Post-Processor"));
    post->setObjectName(QStringLiteral("POST"));
    m_postAction = post->menuAction();
    m_outputDialogAction = post->addAction(tr("&Output Dialog"), this, &RES_ShowFile::OpResults);
    m_outputDialogAction->setObjectName(QStringLiteral("GENRES_RES"));
    // The solver-document commands leave the window's dependants first, then act on the path.
    auto toolCommand = [this](void (FrameServices::*open)(const QString&)) {
        return [this, open] {
            const QString path = m_path;
            UnloadAll();
            if (Frame())
                (Frame()->*open)(path);
        };
    };
    QAction* reduced = post->addAction(tr("Reduced Reaction &Kinetics"), this,
                                       toolCommand(&FrameServices::OpenReduction));
    reduced->setObjectName(QStringLiteral("REDKIN_RES"));
    QAction* compare = post->addAction(tr("&Compare Results of Calculations"), this,
                                       toolCommand(&FrameServices::OpenComparison));
    compare->setObjectName(QStringLiteral("RESCOMP"));
    QAction* chemkin = m_solverMenu->addAction(tr("Reactions in CHEMKIN &Format"), this,
                                               toolCommand(&FrameServices::ReactionsInChemkinFormat));
    chemkin->setObjectName(QStringLiteral("RESREACTIONSTools"));
    // The post-processor window is not part of this program yet; its command stands in the
    // menu, disabled.
    m_laterActions = {m_outputDialogAction};
    m_menus = {edit, format, m_solverMenu};

    m_popup = new QMenu(this);
    m_popup->setObjectName(QStringLiteral("POP"));
    m_popup->addActions({m_undoAction, m_redoAction});
    m_popup->addSeparator();
    m_popup->addActions({m_cutAction, m_copyAction, m_pasteAction, m_deleteAction});
    m_popup->addSeparator();
    m_popup->addActions({selAll, find});
    SolMenu(false);
}

void RES_ShowFile::OPEN_Rich(const QString& path, bool& failed)
{
    failed = false;
    m_path = path;
    std::string name, extension;
    std::size_t position = 0;
    shell::SplitPath(fromQt(path), name, extension, position);
    m_fileName = toQt(name);
    m_box->setFont(courierFont(m_fontSize));
    if (!m_path.isEmpty()) {
        try {
            const std::string bytes = shell::ReadFile(fromQt(m_path));
            // Single-byte text: every byte is one character, so a save gives the bytes back.
            QString text = QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
            text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
            m_box->setPlainText(text);
        } catch (const std::exception&) {
            failed = true;
            return;
        }
    }
    m_box->moveCursor(QTextCursor::Start);
    setWindowTitle(m_path.isEmpty() ? windowTitle() : m_path);
    m_menuCaption = windowTitle();
    // A data view has no file of its own: Save asks for a name.
    if (!m_path.isEmpty() &&
        QFileInfo(m_path).absoluteFilePath() ==
            QFileInfo(toQt(shell::TmpPlotPath(shell::Session()).string())).absoluteFilePath())
        m_path.clear();
    m_undo->Reset();
    setModified(false);
}

void RES_ShowFile::IsSolferFile(bool flag)
{
    m_isSolverDocument = flag;
    SolMenu(flag);
    activated();
}

void RES_ShowFile::SolMenu(bool locked)
{
    m_box->setReadOnly(locked);
    m_box->setTextInteractionFlags(locked ? Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard
                                          : Qt::TextEditorInteraction);
    const bool hasSelection = m_box->textCursor().hasSelection();
    m_cutAction->setEnabled(!locked && hasSelection);
    m_deleteAction->setEnabled(!locked && hasSelection);
    m_pasteAction->setEnabled(!locked);
    m_dateAction->setEnabled(!locked);
    QPalette pal = m_box->palette();
    if (locked) {
        pal.setColor(QPalette::Base, SolverTint);
        pal.setColor(QPalette::Window, SolverTint);
    } else {
        pal = QApplication::palette(m_box);
    }
    m_box->setPalette(pal);
    m_runSolverAction->setEnabled(locked);
    m_solverMenu->setEnabled(locked);
    emit commandsChanged();
}

void RES_ShowFile::setModified(bool modified)
{
    m_modified = modified;
    emit commandsChanged();
}

void RES_ShowFile::updateSelectionCommands()
{
    const bool hasSelection = m_box->textCursor().hasSelection();
    m_copyAction->setEnabled(hasSelection);
    m_cutAction->setEnabled(hasSelection && !m_isSolverDocument);
    m_deleteAction->setEnabled(hasSelection && !m_isSolverDocument);
    emit commandsChanged();
}

void RES_ShowFile::onKeyDown(QKeyEvent* event, bool& consumed)
{
    if (m_undo->handleKey(event)) {
        consumed = true;
        return;
    }
    const int code = VirtualKeyCode(event->key());
    m_ctrlDown = event->modifiers() == Qt::ControlModifier;
    if (m_ctrlDown && code == 86) {
        // Ctrl+V goes through the paste command so that pasted text takes the box's font.
        m_pastePosition = m_box->textCursor().selectionStart();
        if (!m_isSolverDocument)
            ClipInRich();
        consumed = true;
        return;
    }
    if (!m_modified && !m_box->isReadOnly() && !textdocs::IsTypedKeyException(code) &&
        !(m_ctrlDown && (code == 65 || code == 67)))
        setModified(true);
}

bool RES_ShowFile::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_box && event->type() == QEvent::FocusIn)
        activated();
    return QWidget::eventFilter(watched, event);
}

void RES_ShowFile::activated()
{
    if (Frame())
        Frame()->SetToolbarMode(5);
    if (RES_FIND* find = RES_FIND::Instance())
        find->IsSol(m_isSolverDocument);
    m_textEmptyOnActivate = m_box->document()->isEmpty();
    SolMenu(m_isSolverDocument);
    updateSelectionCommands();
    bool hasResults = false;
    if (m_isSolverDocument && !m_path.isEmpty()) {
        // The results heading is on when the file holds the results keyword.
        shell::Message unused;
        try {
            hasResults = !solverfile::HasOutputKeyword(fromQt(m_path), false, unused);
        } catch (const std::exception&) {
        }
    }
    m_postAction->setEnabled(hasResults);
    for (QAction* a : m_laterActions)
        a->setEnabled(false);
    m_undoAction->setEnabled(canUndo());
    m_redoAction->setEnabled(canRedo());
    if (shell::Session().TextSize > 0 && shell::Session().TextSize != m_fontSize)
        FntSize(shell::Session().TextSize);
}

void RES_ShowFile::ToolBr()
{
    activated();
}

void RES_ShowFile::TEXT_CUT()
{
    if (m_isSolverDocument)
        return;
    m_box->cut();
    setModified(true);
}

void RES_ShowFile::TEXT_COPY()
{
    m_box->copy();
}

void RES_ShowFile::ClipInRich()
{
    if (m_isSolverDocument)
        return;
    const QString text = QApplication::clipboard()->text();
    QTextCursor c = m_box->textCursor();
    c.insertText(text); // plain text only: pasted text never brings a font of its own
    m_box->setTextCursor(c);
    setModified(true);
}

void RES_ShowFile::deleteSelection()
{
    if (m_isSolverDocument)
        return;
    m_box->textCursor().removeSelectedText();
    setModified(true);
}

void RES_ShowFile::selectAll()
{
    m_box->selectAll();
}

void RES_ShowFile::DATATIME()
{
    if (m_isSolverDocument)
        return;
    const QString stamp = toQt(textdocs::DateTimeText(shell::Now()));
    QClipboard* clip = QApplication::clipboard();
    const QString kept = clip->text();
    clip->setText(stamp);
    ClipInRich();
    clip->setText(kept);
}

void RES_ShowFile::TXTWORDWRAP()
{
    const bool wrap = m_box->lineWrapMode() == QPlainTextEdit::NoWrap;
    m_box->setLineWrapMode(wrap ? QPlainTextEdit::WidgetWidth : QPlainTextEdit::NoWrap);
    m_wrapAction->setChecked(wrap);
}

void RES_ShowFile::FntSize(int size)
{
    if (size == m_fontSize && m_box->font().pointSize() == size) {
        for (int i = 0; i < 3; ++i)
            m_sizeActions[i]->setChecked((i == 0 ? 14 : i == 1 ? 11 : 9) == size);
        return;
    }
    m_fontSize = size;
    m_box->setFont(courierFont(size));
    for (int i = 0; i < 3; ++i)
        m_sizeActions[i]->setChecked((i == 0 ? 14 : i == 1 ? 11 : 9) == size);
}

void RES_ShowFile::Rich_Undo()
{
    m_undo->Undo();
    setModified(true);
}

void RES_ShowFile::Rich_Redo()
{
    m_undo->Redo();
    setModified(true);
}

void RES_ShowFile::writeTo(const QString& path, bool& failed)
{
    failed = false;
    try {
        WaitCursor wait;
        const QByteArray bytes = m_box->toPlainText().replace('\n', QStringLiteral("\r\n")).toLatin1();
        shell::WriteFileAtomically(fromQt(path), std::string_view(bytes.constData(), bytes.size()));
    } catch (const std::exception& e) {
        failed = true;
        ReportError(QStringLiteral("Txt#101. "), toQt(e.what()));
    }
}

void RES_ShowFile::SVTXT(bool& failed)
{
    failed = false;
    if (m_isSolverDocument)
        return;
    if (m_path.isEmpty()) {
        bool cancelled = false;
        const QString path = ShowSaveDialog(cancelled, toQt(shell::SaveDialogFilter(2)));
        if (cancelled) {
            failed = true;
            return;
        }
        m_path = path;
        std::string name, extension;
        std::size_t position = 0;
        shell::SplitPath(fromQt(path), name, extension, position);
        m_fileName = toQt(name);
        setWindowTitle(path);
        m_menuCaption = path;
    }
    writeTo(m_path, failed);
    if (!failed)
        setModified(false);
}

void RES_ShowFile::SVTXT()
{
    bool failed = false;
    SVTXT(failed);
}

void RES_ShowFile::SaveAs()
{
    if (m_isSolverDocument)
        return;
    bool cancelled = false;
    const QString path = ShowSaveDialog(cancelled, toQt(shell::SaveDialogFilter(2)));
    if (cancelled)
        return;
    bool failed = false;
    writeTo(path, failed);
    if (!failed)
        setModified(false);
}

bool RES_ShowFile::askToSave()
{
    if (m_isSolverDocument || !m_modified)
        return true;
    if (isMinimized())
        showNormal();
    raise();
    textdocs::TextDocument state;
    state.Path = fromQt(m_path);
    state.Modified = m_modified;
    state.IsSolverDocument = m_isSolverDocument;
    const int answer = ShowMessage(state.closeQuestion(fromQt(windowTitle())));
    if (answer == AnswerYes) {
        bool failed = false;
        SVTXT(failed);
        return !failed;
    }
    if (answer == AnswerCancel) {
        shell::Session().CancelClose = true;
        return false;
    }
    return true;
}

void RES_ShowFile::closeEvent(QCloseEvent* event)
{
    if (!askToSave()) {
        event->ignore();
        return;
    }
    if (RES_FIND* find = RES_FIND::Instance())
        find->close();
    if (m_isSolverDocument)
        UnloadAll();
    event->accept();
}

void RES_ShowFile::UnloadAll()
{
    if (Frame())
        Frame()->CloseDialogs(QString());
}

void RES_ShowFile::RunSol()
{
    if (!m_isSolverDocument)
        return;
    const QString path = m_path;
    const QString caption = windowTitle();
    UnloadAll();
    if (!Frame())
        return;
    shell::Session().FrameWasMaximised = Frame()->IsMaximised();
    Frame()->Timer3Run(path, caption);
}

void RES_ShowFile::OpResults()
{
    const QString path = m_path;
    UnloadAll();
    if (Frame())
        Frame()->ShowSolverResults(path);
}

void RES_ShowFile::Set_Page_SetUp(const QString& heading, bool pageNumbers, int firstPageNumber)
{
    m_pageHeading = heading.isNull() ? QStringLiteral("") : heading;
    m_pageNumbers = pageNumbers;
    m_firstPageNumber = firstPageNumber;
}

void RES_ShowFile::Get_Page_SetUp(QString& heading, bool& pageNumbers, int& firstPageNumber) const
{
    // Until the user sets one, a file prints its path as heading, a new document the name it
    // got when it was made.
    heading = !m_pageHeading.isNull() ? m_pageHeading : !m_path.isEmpty() ? m_path : m_printName;
    pageNumbers = m_pageNumbers;
    firstPageNumber = m_firstPageNumber;
}

bool RES_ShowFile::SelZxBB() const
{
    return m_box->textCursor().hasSelection();
}

void RES_ShowFile::Print_Rch()
{
    QString text = SelZxBB() ? m_box->textCursor().selectedText() : m_box->toPlainText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    text.replace(QChar::LineSeparator, QLatin1Char('\n'));
    TextReportSettings settings;
    settings.pageParameters = shell::Session().PageParameters;
    Get_Page_SetUp(settings.heading, settings.pageNumbers, settings.firstPageNumber);
    settings.alignment = shell::Session().PageNumberAlignment;
    settings.font = courierFont(m_fontSize);
    ShowTextPrintPreview(this, text, settings);
}

void RES_ShowFile::PrintText()
{
    RES_PAGESETUP::Open(this);
}

QString RES_ShowFile::NewTextDocument(bool flag)
{
    std::vector<std::string> captions;
    if (Frame()) {
        for (QWidget* w : Frame()->Children())
            captions.push_back(fromQt(w->windowTitle()));
    }
    const QString caption = toQt(textdocs::NewTextDocument(captions));
    if (caption.isEmpty())
        return caption;
    auto* doc = new RES_ShowFile;
    doc->setWindowTitle(caption);
    doc->m_menuCaption = caption;
    Q_UNUSED(flag);
    if (Frame()) {
        Frame()->AddChild(doc);
        Frame()->ZordTimer(caption);
    } else {
        doc->show();
    }
    return caption;
}

void RES_ShowFile::Find_Rich(const QString& what, int options, bool showEndMessage)
{
    QtTextBox box(m_box);
    textdocs::TextDocument doc;
    doc.FindPosition = m_findPosition;
    doc.FindResult = m_findResult;
    const auto message = doc.Find_Rich(box, what.toLatin1().toStdString(), options, showEndMessage);
    m_findPosition = doc.FindPosition;
    m_findResult = doc.FindResult;
    if (!message.empty())
        ShowMessage(message);
}

void RES_ShowFile::Replace_Rich(const QString& replacement)
{
    if (m_isSolverDocument)
        return;
    QtTextBox box(m_box);
    textdocs::TextDocument doc;
    doc.FindPosition = m_findPosition;
    doc.FindResult = m_findResult;
    doc.Replace_Rich(box, replacement.toLatin1().toStdString());
    m_findPosition = doc.FindPosition;
    if (doc.Modified)
        setModified(true);
}

int RES_ShowFile::Replace_ALL(const QString& what, const QString& replacement, int options)
{
    if (m_isSolverDocument || what.isEmpty())
        return 0;
    int count = 0;
    shell::Message message;
    {
        WaitCursor wait;
        QtTextBox box(m_box);
        textdocs::TextDocument doc;
        m_box->setUpdatesEnabled(false);
        message = doc.Replace_ALL(box, what.toLatin1().toStdString(),
                                  replacement.toLatin1().toStdString(), options, &count);
        m_box->setUpdatesEnabled(true);
        m_findPosition = doc.FindPosition;
        m_findResult = doc.FindResult;
    }
    ShowMessage(message);
    setModified(true);
    return count;
}

} // namespace zarvion::gui
