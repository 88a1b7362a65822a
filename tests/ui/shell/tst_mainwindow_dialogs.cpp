#include "common/WindowTesting.h"
#include "core/Hourglass.h"
#include "ui/shell/WidgetDialogs.h"

#include <QColorDialog>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

using WindowTesting::whenModal;

class TestWidgetDialogs : public QObject {
    Q_OBJECT
private slots:
    void installsItselfWhileItLives() {
        Dialogs::Presenter* before = Dialogs::installed();
        {
            WidgetDialogs dialogs;
            QCOMPARE(Dialogs::installed(), &dialogs);
        }
        QCOMPARE(Dialogs::installed(), before);
    }

    void nameFilters_data() {
        QTest::addColumn<QString>("filter");
        QTest::addColumn<QStringList>("filters");
        QTest::newRow("race logs")
            << "Tarnwick Race Log Files (*.trl) |*.trl|All Files (*.*) |*.*|"
            << QStringList({"Tarnwick Race Log Files (*.trl)", "All Files (*)"});
        QTest::newRow("weather logs")
            << "Tarnwick Weather Log Files (*.csv) |*.csv|All Files (*.*) |*.*|"
            << QStringList({"Tarnwick Weather Log Files (*.csv)", "All Files (*)"});
        QTest::newRow("several patterns")
            << "Pictures |*.bmp;*.jpg|" << QStringList({"Pictures (*.bmp *.jpg)"});
        QTest::newRow("description and pattern differ")
            << "Workbooks (*.xls) |*.xlsx|" << QStringList({"Workbooks (*.xlsx)"});
    }
    void nameFilters() {
        QFETCH(QString, filter);
        QFETCH(QStringList, filters);
        QCOMPARE(::nameFilters(filter), filters);
    }

    void linesJoinedByCrLfShowAsLines() {
        QCOMPARE(boxText("WARNING:\r\n  Unable to start serial communications"),
                 QStringLiteral("WARNING:\n  Unable to start serial communications"));
    }

    void questionBox() {
        WidgetDialogs dialogs;
        QString title, text;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        QMessageBox::StandardButtons buttons;
        QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
        whenModal([&](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            QVERIFY(box);
            title = box->windowTitle();
            text = box->text();
            icon = box->icon();
            buttons = box->standardButtons();
            defaultButton = box->standardButton(box->defaultButton());
            box->button(QMessageBox::No)->click();
        });
        const Dialogs::Answer answer =
            Dialogs::show({"First line\r\nsecond line", "Tarnwick - Test", Dialogs::Icon::Question,
                           Dialogs::Buttons::YesNo, Dialogs::Answer::No});
        QCOMPARE(answer, Dialogs::Answer::No);
        QCOMPARE(title, QStringLiteral("Tarnwick - Test"));
        QCOMPARE(text, QStringLiteral("First line\nsecond line"));
        QCOMPARE(icon, QMessageBox::Question);
        QCOMPARE(buttons, QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(defaultButton, QMessageBox::No);
    }

    void boxAnswers_data() {
        QTest::addColumn<int>("buttons");
        QTest::addColumn<int>("pressed");
        QTest::addColumn<int>("answer");
        QTest::newRow("ok") << int(Dialogs::Buttons::Ok) << int(QMessageBox::Ok)
                            << int(Dialogs::Answer::Ok);
        QTest::newRow("ok of two")
            << int(Dialogs::Buttons::OkCancel) << int(QMessageBox::Ok) << int(Dialogs::Answer::Ok);
        QTest::newRow("cancel") << int(Dialogs::Buttons::OkCancel) << int(QMessageBox::Cancel)
                                << int(Dialogs::Answer::Cancel);
        QTest::newRow("yes") << int(Dialogs::Buttons::YesNo) << int(QMessageBox::Yes)
                             << int(Dialogs::Answer::Yes);
    }
    void boxAnswers() {
        QFETCH(int, buttons);
        QFETCH(int, pressed);
        QFETCH(int, answer);
        WidgetDialogs dialogs;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        whenModal([&](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            icon = box->icon();
            box->button(QMessageBox::StandardButton(pressed))->click();
        });
        const Dialogs::Answer given =
            Dialogs::show({"Text", "Title", Dialogs::Icon::Critical, Dialogs::Buttons(buttons),
                           Dialogs::Answer::Ok});
        QCOMPARE(int(given), answer);
        QCOMPARE(icon, QMessageBox::Critical);
    }

    void escapeAnswersNo() {
        WidgetDialogs dialogs;
        whenModal([](QWidget* modal) { QTest::keyClick(modal, Qt::Key_Escape); });
        QCOMPARE(Dialogs::show({"Text", "Title", Dialogs::Icon::Question, Dialogs::Buttons::YesNo,
                                Dialogs::Answer::Yes}),
                 Dialogs::Answer::No);
    }

    void aDialogGetsTheOrdinaryPointerWhileTheProgramIsBusy() {
        WidgetDialogs dialogs;
        Hourglass busy;
        std::optional<Qt::CursorShape> during;
        whenModal([&](QWidget* modal) {
            during = QGuiApplication::overrideCursor()->shape();
            qobject_cast<QDialog*>(modal)->reject();
        });
        Dialogs::inform("Text", "Title");
        QCOMPARE(during, std::optional(Qt::ArrowCursor));
        QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    }

    void aDialogLeavesAnIdlePointerAlone() {
        WidgetDialogs dialogs;
        bool overridden = true;
        whenModal([&](QWidget* modal) {
            overridden = QGuiApplication::overrideCursor() != nullptr;
            qobject_cast<QDialog*>(modal)->reject();
        });
        QVERIFY(!Dialogs::chooseColor(Qt::white));
        QVERIFY(!overridden);
    }

    void openAFile() {
        WidgetDialogs dialogs;
        QTemporaryDir folder;
        QFile(folder.filePath("2026-11-22.csv")).open(QIODevice::WriteOnly);
        QString title, directory, selectedFilter;
        QStringList filters;
        QFileDialog::AcceptMode mode = QFileDialog::AcceptSave;
        whenModal([&](QWidget* modal) {
            auto* dialog = qobject_cast<QFileDialog*>(modal);
            QVERIFY(dialog);
            title = dialog->windowTitle();
            directory = dialog->directory().absolutePath();
            filters = dialog->nameFilters();
            selectedFilter = dialog->selectedNameFilter();
            mode = dialog->acceptMode();
            dialog->selectFile(folder.filePath("2026-11-22.csv"));
            static_cast<QDialog*>(dialog)->accept();
        });
        Dialogs::FileRequest request;
        request.title = "Load Logged Weather";
        request.filter = "Tarnwick Weather Log Files (*.csv) |*.csv|All Files (*.*) |*.*|";
        request.filterIndex = 2;
        request.initialFolder = folder.path();
        const std::optional<Dialogs::FileChoice> choice = Dialogs::chooseFile(request);
        QVERIFY(choice);
        QCOMPARE(choice->path, folder.filePath("2026-11-22.csv"));
        QCOMPARE(choice->title, QStringLiteral("2026-11-22.csv"));
        QCOMPARE(title, QStringLiteral("Load Logged Weather"));
        QCOMPARE(directory, QDir(folder.path()).absolutePath());
        QCOMPARE(filters, QStringList({"Tarnwick Weather Log Files (*.csv)", "All Files (*)"}));
        QCOMPARE(selectedFilter, QStringLiteral("All Files (*)"));
        QCOMPARE(mode, QFileDialog::AcceptOpen);
    }

    void saveUnderTheProposedName() {
        WidgetDialogs dialogs;
        QTemporaryDir folder;
        QFileDialog::AcceptMode mode = QFileDialog::AcceptOpen;
        whenModal([&](QWidget* modal) {
            auto* dialog = qobject_cast<QFileDialog*>(modal);
            mode = dialog->acceptMode();
            static_cast<QDialog*>(dialog)->accept();
        });
        Dialogs::FileRequest request;
        request.save = true;
        request.title = "Save Excel File";
        request.filter = "Excel Workbooks (*.xlsx) |*.xlsx|All Files (*.*) |*.*|";
        request.initialFolder = folder.path();
        request.fileName = "2026-11-22log.xlsx";
        const std::optional<Dialogs::FileChoice> choice = Dialogs::chooseFile(request);
        QVERIFY(choice);
        QCOMPARE(mode, QFileDialog::AcceptSave);
        QCOMPARE(choice->path, folder.filePath("2026-11-22log.xlsx"));
        QCOMPARE(choice->title, QStringLiteral("2026-11-22log.xlsx"));
    }

    void cancelledFileDialogGivesNothing() {
        WidgetDialogs dialogs;
        whenModal([](QWidget* modal) { qobject_cast<QDialog*>(modal)->reject(); });
        QVERIFY(!Dialogs::chooseFile(
            {false, "Open Race Log", "All Files (*.*) |*.*|", 1, QDir::tempPath(), {}}));
    }

    void pickAColour() {
        WidgetDialogs dialogs;
        QColor offered;
        whenModal([&](QWidget* modal) {
            auto* dialog = qobject_cast<QColorDialog*>(modal);
            QVERIFY(dialog);
            offered = dialog->currentColor();
            dialog->setCurrentColor(QColor(1, 2, 3));
            dialog->accept();
        });
        QCOMPARE(Dialogs::chooseColor(QColor(0x80, 0, 0)), std::optional(QColor(1, 2, 3)));
        QCOMPARE(offered, QColor(0x80, 0, 0));
    }

    void cancelledColourDialogGivesNothing() {
        WidgetDialogs dialogs;
        whenModal([](QWidget* modal) { qobject_cast<QDialog*>(modal)->reject(); });
        QVERIFY(!Dialogs::chooseColor(Qt::white));
    }
};

QTEST_MAIN(TestWidgetDialogs)
#include "tst_mainwindow_dialogs.moc"
