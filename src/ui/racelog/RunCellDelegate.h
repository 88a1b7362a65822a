#pragma once

#include <QList>
#include <QStyledItemDelegate>

class QAbstractItemView;
class QComboBox;
class QKeyEvent;
class QLineEdit;

// The editors of the run cells, picked by the column's entry in the column table: txtTime
// for the time of a run, txtCtrlDate for its date, cboLane for its lane ("Left" or "Right" and
// nothing else) and txtEdit for every number. Each is made once, on the view's viewport, and
// only hidden when an edit ends, so it holds what it held last. The text editors let only the
// characters of their kind be typed, and put their text right when they are left: a time or
// date that cannot be read becomes the present one, a number that is no number is emptied.
//
// The view opens an editor with edit() and readies it with startEdit(). Enter ends the edit
// and writes the cell, Escape ends it and writes nothing, and Up or Down in a text editor asks
// the view to write the cell and move on a row.
class RunCellDelegate : public QStyledItemDelegate {
    Q_OBJECT
public:
    explicit RunCellDelegate(QAbstractItemView& view);

    // Readies the editor the view has just opened, given the first key typed (32 for a double
    // click) and the text of the cell.
    void startEdit(QWidget* editor, int keyCode, const QString& cellText) const;

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    void destroyEditor(QWidget* editor, const QModelIndex& index) const override;

    QLineEdit* txtTime;
    QLineEdit* txtCtrlDate;
    QComboBox* cboLane;
    QLineEdit* txtEdit;

signals:
    // Up (-1) or Down (+1) in a text editor: the edit is done, and the user moves on a row.
    void rowStepRequested(int step);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // What one text editor lets be typed and how it puts its text right.
    struct TextRule {
        QLineEdit* editor;
        QChar (*keyFilter)(QChar);
        QString (*settle)(const QString&);
    };

    QLineEdit* makeTextEditor(QWidget* viewport, const char* name);
    const TextRule* ruleOf(const QObject* editor) const;
    QString settledText(QWidget* editor) const;
    void settle(QWidget* editor) const;
    bool handleKey(QWidget* editor, QKeyEvent* event);
    bool filterKey(const TextRule& rule, QKeyEvent* event) const;

    QList<TextRule> rules;
    // Where the cursor of a text editor stood when it was last left; the view moves it when
    // it opens the editor, and a typed key that is dropped puts it back.
    mutable int heldCursor = 0;
};
