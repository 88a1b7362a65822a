#include "ui/racelog/RunCellDelegate.h"

#include "racelog/ColumnTable.h"
#include "racelog/KeyFilters.h"
#include "racelog/RunCellText.h"
#include "racelog/TypedKey.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>

namespace {

constexpr int TabCode = 9;
constexpr int SpaceCode = 32;
// The clipboard keys of a text box, Ctrl+C, Ctrl+V and Ctrl+X, are no characters to filter.
constexpr int ClipboardCodes[] = {3, 22, 24};

// The text editors sit a pixel inside the cell's grid lines.
constexpr int TextInset = 1;

QString settleTime(const QString& text) {
    return RunCellText::settledTime(text, QDateTime::currentDateTime());
}
QString settleDate(const QString& text) {
    return RunCellText::settledDate(text, QDateTime::currentDateTime());
}

} // namespace

RunCellDelegate::RunCellDelegate(QAbstractItemView& view) : QStyledItemDelegate(&view) {
    QWidget* viewport = view.viewport();
    txtTime = makeTextEditor(viewport, "txtTime");
    txtCtrlDate = makeTextEditor(viewport, "txtCtrlDate");
    cboLane = new QComboBox(viewport);
    cboLane->setObjectName(QStringLiteral("cboLane"));
    cboLane->addItems({QStringLiteral("Left"), QStringLiteral("Right")});
    cboLane->hide();
    txtEdit = makeTextEditor(viewport, "txtEdit");
    rules = {{txtTime, KeyFilters::time, settleTime},
             {txtCtrlDate, KeyFilters::date, settleDate},
             {txtEdit, KeyFilters::signedNumber, RunCellText::settledNumber}};
}

QLineEdit* RunCellDelegate::makeTextEditor(QWidget* viewport, const char* name) {
    auto* editor = new QLineEdit(viewport);
    editor->setObjectName(QLatin1String(name));
    editor->hide();
    return editor;
}

QWidget* RunCellDelegate::createEditor(QWidget*, const QStyleOptionViewItem&,
                                       const QModelIndex& index) const {
    QWidget* editor = nullptr;
    switch (ColumnTable::Columns.at(index.column() + 1).entry) {
    case ColumnTable::Entry::Time:
        editor = txtTime;
        break;
    case ColumnTable::Entry::Date:
        editor = txtCtrlDate;
        break;
    case ColumnTable::Entry::Lane:
        return cboLane;
    case ColumnTable::Entry::Number:
        editor = txtEdit;
        break;
    case ColumnTable::Entry::NotTyped:
        return nullptr;
    }
    heldCursor = static_cast<QLineEdit*>(editor)->cursorPosition();
    return editor;
}

// Time and date open with the cell's text for a key that types nothing or a blank; a typed
// character is dropped there, and the editor shows what it held last. A lane cell picks its
// item from the cell. A number cell starts from the character typed, or from its text.
void RunCellDelegate::startEdit(QWidget* editor, int keyCode, const QString& cellText) const {
    if (editor == cboLane) {
        if (keyCode <= SpaceCode && !cellText.isEmpty())
            cboLane->setCurrentIndex(cellText.contains(u'L', Qt::CaseInsensitive) ? 0 : 1);
    } else if (editor == txtEdit) {
        if (keyCode > SpaceCode) {
            txtEdit->setText(QString(QChar(keyCode)));
            txtEdit->setCursorPosition(1);
        } else {
            txtEdit->setText(cellText);
            txtEdit->selectAll();
        }
    } else if (auto* text = qobject_cast<QLineEdit*>(editor)) {
        if (keyCode <= SpaceCode && keyCode != TabCode) {
            text->setText(cellText);
            text->selectAll();
        } else {
            text->setCursorPosition(heldCursor);
        }
    }
}

// The editor is filled by startEdit alone: a change of the cell while it is open leaves what
// the user is typing alone.
void RunCellDelegate::setEditorData(QWidget*, const QModelIndex&) const {}

void RunCellDelegate::setModelData(QWidget* editor, QAbstractItemModel* model,
                                   const QModelIndex& index) const {
    model->setData(index, settledText(editor));
}

void RunCellDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                           const QModelIndex&) const {
    const QRect& cell = option.rect;
    if (editor == cboLane)
        cboLane->setGeometry(cell.x(), cell.y(), cell.width(), cboLane->sizeHint().height());
    else
        editor->setGeometry(cell.x(), cell.y(), cell.width() - TextInset,
                            cell.height() - TextInset);
}

// The editor stays for the next edit, with its text put right as leaving puts it right.
void RunCellDelegate::destroyEditor(QWidget* editor, const QModelIndex&) const {
    settle(editor);
    editor->hide();
}

const RunCellDelegate::TextRule* RunCellDelegate::ruleOf(const QObject* editor) const {
    for (const TextRule& rule : rules) {
        if (rule.editor == editor)
            return &rule;
    }
    return nullptr;
}

QString RunCellDelegate::settledText(QWidget* editor) const {
    if (const TextRule* rule = ruleOf(editor))
        return rule->settle(rule->editor->text());
    return cboLane->currentText();
}

void RunCellDelegate::settle(QWidget* editor) const {
    if (const TextRule* rule = ruleOf(editor))
        rule->editor->setText(rule->settle(rule->editor->text()));
}

bool RunCellDelegate::eventFilter(QObject* watched, QEvent* event) {
    auto* editor = qobject_cast<QWidget*>(watched);
    if (!editor)
        return false;
    if (event->type() == QEvent::KeyPress)
        return handleKey(editor, static_cast<QKeyEvent*>(event));
    if (event->type() == QEvent::FocusOut) {
        // A menu or another window taking the focus for a moment is no leaving.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            settle(editor);
    }
    return false;
}

bool RunCellDelegate::handleKey(QWidget* editor, QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit commitData(editor);
        emit closeEditor(editor);
        return true;
    case Qt::Key_Escape:
        emit closeEditor(editor);
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
bool RunCellDelegate::filterKey(const TextRule& rule, QKeyEvent* event) const {
    const int code = typedKeyCode(*event);
    if (code == 0 || std::ranges::find(ClipboardCodes, code) != std::end(ClipboardCodes))
        return false;
    return rule.keyFilter(QChar(code)).isNull();
}
