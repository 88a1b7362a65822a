#pragma once

#include <QList>
#include <QObject>
#include <QString>
#include <optional>

class QAbstractItemView;
class QComboBox;
class QKeyEvent;
class QLineEdit;
class QRect;
class QWidget;

// The four editors that open over a cell of the run table, one at a time: txtTime for the
// time of a run, txtCtrlDate for its date, cboLane for its lane ("Left" or "Right" and nothing
// else) and txtEdit for every number. They lie hidden on the table until a key or a double
// click opens one. The text editors let only the characters of their kind be typed, and put
// their text right when they are left: a time or date that cannot be read becomes the present
// one, a number that is no number is emptied.
class CellEditors : public QObject {
    Q_OBJECT
public:
    // The editors are made on the table's viewport; the focus goes back to the table.
    explicit CellEditors(QAbstractItemView& table);
    // The editors stay with the viewport, deaf from now on.
    ~CellEditors() override;

    // Opens the editor of a run table column over `cell`, given the first key typed (32 for a
    // double click) and the text the cell holds, and gives it the focus.
    void open(int column, int keyCode, const QString& cellText, const QRect& cell);
    bool isOpen() const { return openEditor() != nullptr; }
    // Hides the open editor and answers its text, put right as leaving it puts it right;
    // nullopt when no editor is open. An editor that had the focus hands it to the table.
    std::optional<QString> close();

    QLineEdit* txtTime;
    QLineEdit* txtCtrlDate;
    QComboBox* cboLane;
    QLineEdit* txtEdit;

signals:
    // Enter: the edit is done.
    void accepted();
    // Escape: the editor is hidden and its text thrown away.
    void cancelled();
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

    QLineEdit* makeTextEditor(const char* name);
    QWidget* openEditor() const;
    const TextRule* ruleOf(const QObject* editor) const;
    QString settledText(QWidget* editor) const;
    bool handleKey(QWidget* editor, QKeyEvent* event);
    bool filterKey(const TextRule& rule, QKeyEvent* event) const;
    void cancel(QWidget* editor);

    QAbstractItemView& table;
    QList<TextRule> rules;
};
