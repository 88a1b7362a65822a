#include "ui/racelog/CellEditors.h"

#include "racelog/KeyFilters.h"
#include "racelog/RunCellText.h"
#include "racelog/RunTable.h"
#include "racelog/TypedKey.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>

namespace {

enum Column { TimeColumn = 1, DateColumn = 2, LaneColumn = 3 };

constexpr int TabCode = 9;
constexpr int SpaceCode = 32;
// The clipboard keys of a text box, Ctrl+C, Ctrl+V and Ctrl+X, are no characters to filter.
constexpr int ClipboardCodes[] = {3, 22, 24};

// The text editors sit a hair inside the cell's grid lines.
const int TextInset = RunTable::twipsToPixels(8);

QString settleTime(const QString& text) {
    return RunCellText::SettledTime(text, QDateTime::currentDateTime());
}
QString settleDate(const QString& text) {
    return RunCellText::SettledDate(text, QDateTime::currentDateTime());
}

} // namespace

CellEditors::CellEditors(QAbstractItemView& table) : QObject(&table), table(table) {
    txtTime = makeTextEditor("txtTime");
    txtCtrlDate = makeTextEditor("txtCtrlDate");
    cboLane = new QComboBox(table.viewport());
    cboLane->setObjectName(QStringLiteral("cboLane"));
    cboLane->addItems({QStringLiteral("Left"), QStringLiteral("Right")});
    cboLane->hide();
    cboLane->installEventFilter(this);
    txtEdit = makeTextEditor("txtEdit");
    rules = {{txtTime, KeyFilters::Time, settleTime},
             {txtCtrlDate, KeyFilters::Date, settleDate},
             {txtEdit, KeyFilters::SignedNumber, RunCellText::SettledNumber}};
}

CellEditors::~CellEditors() {
    for (QObject* editor : {static_cast<QObject*>(txtTime), static_cast<QObject*>(txtCtrlDate),
                            static_cast<QObject*>(cboLane), static_cast<QObject*>(txtEdit)})
        editor->removeEventFilter(this);
}

QLineEdit* CellEditors::makeTextEditor(const char* name) {
    auto* editor = new QLineEdit(table.viewport());
    editor->setObjectName(QLatin1String(name));
    editor->hide();
    editor->installEventFilter(this);
    return editor;
}

// Time and date open with the cell's text for a key that types nothing or a blank; a typed
// character is dropped there, and the editor shows what it held last. A lane cell picks its
// item from the cell. A number cell starts from the character typed, or from its text.
void CellEditors::open(int column, int keyCode, const QString& cellText, const QRect& cell) {
    QWidget* editor = nullptr;
    if (column == TimeColumn || column == DateColumn) {
        QLineEdit* text = column == TimeColumn ? txtTime : txtCtrlDate;
        if (keyCode <= SpaceCode && keyCode != TabCode) {
            text->setText(cellText);
            text->selectAll();
        }
        text->setGeometry(cell.x(), cell.y(), cell.width() - TextInset, cell.height() - TextInset);
        editor = text;
    } else if (column == LaneColumn) {
        if (keyCode <= SpaceCode && !cellText.isEmpty())
            cboLane->setCurrentIndex(cellText.contains(u'L', Qt::CaseInsensitive) ? 0 : 1);
        cboLane->setGeometry(cell.x(), cell.y(), cell.width(), cboLane->sizeHint().height());
        editor = cboLane;
    } else {
        if (keyCode > SpaceCode) {
            txtEdit->setText(QString(QChar(keyCode)));
            txtEdit->setCursorPosition(1);
        } else {
            txtEdit->setText(cellText);
            txtEdit->selectAll();
        }
        txtEdit->setGeometry(cell.x(), cell.y(), cell.width() - TextInset,
                             cell.height() - TextInset);
        editor = txtEdit;
    }
    editor->show();
    editor->raise();
    editor->setFocus();
}

std::optional<QString> CellEditors::close() {
    QWidget* editor = openEditor();
    if (!editor)
        return std::nullopt;
    const QString text = settledText(editor);
    // Taking the focus away first keeps it from passing on to whatever follows the editor.
    const bool hadFocus = editor->hasFocus();
    editor->clearFocus();
    editor->hide();
    if (hadFocus)
        table.setFocus();
    return text;
}

// The order in which a commit looks for the open editor.
QWidget* CellEditors::openEditor() const {
    for (QWidget* editor : {static_cast<QWidget*>(txtEdit), static_cast<QWidget*>(txtTime),
                            static_cast<QWidget*>(txtCtrlDate), static_cast<QWidget*>(cboLane)}) {
        if (editor->isVisible())
            return editor;
    }
    return nullptr;
}

const CellEditors::TextRule* CellEditors::ruleOf(const QObject* editor) const {
    for (const TextRule& rule : rules) {
        if (rule.editor == editor)
            return &rule;
    }
    return nullptr;
}

QString CellEditors::settledText(QWidget* editor) const {
    if (const TextRule* rule = ruleOf(editor))
        return rule->settle(rule->editor->text());
    return cboLane->currentText();
}

bool CellEditors::eventFilter(QObject* watched, QEvent* event) {
    auto* editor = qobject_cast<QWidget*>(watched);
    if (!editor)
        return false;
    if (event->type() == QEvent::KeyPress)
        return handleKey(editor, static_cast<QKeyEvent*>(event));
    if (event->type() == QEvent::FocusOut) {
        // A menu or another window taking the focus for a moment is no leaving.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        const TextRule* rule = ruleOf(editor);
        if (rule && reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            rule->editor->setText(rule->settle(rule->editor->text()));
    }
    return false;
}

bool CellEditors::handleKey(QWidget* editor, QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit accepted();
        return true;
    case Qt::Key_Escape:
        cancel(editor);
        return true;
    default:
        break;
    }
    // The lane list keeps its own keys: Up and Down pick the other item.
    const TextRule* rule = ruleOf(editor);
    if (!rule)
        return false;
    if (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down) {
        emit rowStepRequested(event->key() == Qt::Key_Up ? -1 : 1);
        return true;
    }
    return filterKey(*rule, event);
}

// A typed character goes through the editor's filter, which lets it pass or swallows it.
bool CellEditors::filterKey(const TextRule& rule, QKeyEvent* event) const {
    const int code = TypedKeyCode(*event);
    if (code == 0 || std::ranges::find(ClipboardCodes, code) != std::end(ClipboardCodes))
        return false;
    return rule.keyFilter(QChar(code)).isNull();
}

void CellEditors::cancel(QWidget* editor) {
    editor->clearFocus();
    editor->hide();
    emit cancelled();
}
