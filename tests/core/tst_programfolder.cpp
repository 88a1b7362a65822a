#include "core/ProgramFolder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

// The folder for the user's files: the program's own while it can be written, else the
// user's documents, else home. Each case has a home of its own.
class TestProgramFolder : public QObject {
    Q_OBJECT

    QTemporaryDir home;

private slots:
    void init() {
        QVERIFY(home.isValid());
        qputenv("HOME", home.path().toUtf8());
    }

    void aProgramFolderThatCanBeWrittenServes() {
        QTemporaryDir program;
        QCOMPARE(ProgramFolder::forUserFiles(program.path()), program.path());
    }

    void anInstalledProgramGivesTheDocumentsFolder() {
        QVERIFY(QDir(home.path()).mkpath("Documents"));
        const QString missing = home.path() + "/prefix/bin";
        QCOMPARE(ProgramFolder::forUserFiles(missing), home.path() + "/Documents");
    }

    void withoutADocumentsFolderHomeServes() {
        QDir(home.path() + "/Documents").removeRecursively();
        QCOMPARE(ProgramFolder::forUserFiles(home.path() + "/prefix/bin"), home.path());
    }

    void aFileIsNoFolder() {
        QFile file(home.path() + "/tarnwick");
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        QCOMPARE(ProgramFolder::forUserFiles(file.fileName()), home.path());
    }
};

QTEST_GUILESS_MAIN(TestProgramFolder)
#include "tst_programfolder.moc"
