#include "common/TestHome.h"
#include "core/ShippedFiles.h"

#include <QDir>
#include <QFile>
#include <QMimeDatabase>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString Template = QStringLiteral("Bramholdtrack.xlsx");
const QString RaceLogType = QStringLiteral("application/x-tarnwick-race-log");

bool writeFile(const QString& path, const QByteArray& bytes = "x") {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

// An SQLite file as the program saves a race log: its application id is "TRL1".
bool writeSqlite(const QString& path, bool asRaceLog) {
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), path);
        db.setDatabaseName(path);
        if (db.open()) {
            QSqlQuery query(db);
            ok = (!asRaceLog || query.exec(QStringLiteral("PRAGMA application_id = 1414679601"))) &&
                 query.exec(QStringLiteral("CREATE TABLE runs (id INTEGER)"));
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(path);
    return ok;
}

} // namespace

class TestShippedFiles : public QObject {
    Q_OBJECT
private:
    QTemporaryDir mimeHome;

private slots:
    // The desktop's file type database as an installation leaves it: the system's types and
    // the package's merged into one, before anything in this process asks for a type.
    void initTestCase() {
        const QString packages = mimeHome.filePath(QStringLiteral("mime/packages"));
        QVERIFY(QDir().mkpath(packages));
        QVERIFY(QFile::copy(QStringLiteral("/usr/share/mime/packages/freedesktop.org.xml"),
                            packages + QStringLiteral("/freedesktop.org.xml")));
        QVERIFY(QFile::copy(QStringLiteral(TARNWICK_MIME_XML),
                            packages + QStringLiteral("/org.tarnwick.Tarnwick.xml")));
        QProcess update;
        update.start(QStringLiteral("update-mime-database"), {mimeHome.filePath("mime")});
        QVERIFY2(update.waitForFinished(60000) && update.exitCode() == 0,
                 update.readAllStandardError().constData());
        qputenv("XDG_DATA_DIRS", mimeHome.path().toLocal8Bit());
    }

    void theBuildTreeHasTheTemplateBesideThePrograms() {
        const QString found = ShippedFiles::find(programFolder(), Template);
        QCOMPARE(found, programFolder() + u'/' + Template);
        QVERIFY(QFile::exists(found));
    }

    void anInstallationHasItUnderShareBesideBin() {
        QTemporaryDir prefix;
        const QString shared = prefix.filePath(QStringLiteral("share/tarnwick/") + Template);
        QVERIFY(writeFile(shared));
        QCOMPARE(ShippedFiles::find(prefix.filePath("bin"), Template), shared);
    }

    // A copy beside the program wins, as the Windows build ships it.
    void aCopyBesideTheProgramComesFirst() {
        QTemporaryDir prefix;
        QVERIFY(writeFile(prefix.filePath(QStringLiteral("share/tarnwick/") + Template)));
        const QString beside = prefix.filePath(QStringLiteral("bin/") + Template);
        QVERIFY(writeFile(beside));
        QCOMPARE(ShippedFiles::find(prefix.filePath("bin"), Template), beside);
    }

    // With neither, the message about the missing template names the program's folder.
    void withNeitherThePlaceBesideTheProgramIsNamed() {
        QTemporaryDir prefix;
        QCOMPARE(ShippedFiles::find(prefix.filePath("bin"), Template),
                 prefix.filePath(QStringLiteral("bin/") + Template));
    }

    // The installation a package test made, when one is named: its program folder finds the
    // template the installation put under share.
    void theInstalledProgramFindsTheInstalledTemplate() {
        const QString installed = qEnvironmentVariable("TARNWICK_INSTALLED_PREFIX");
        if (installed.isEmpty())
            QSKIP("No installation to look at (the package install test names one)");
        const QString found = ShippedFiles::find(installed + QStringLiteral("/bin"), Template);
        QCOMPARE(found, installed + QStringLiteral("/share/tarnwick/") + Template);
        QVERIFY(QFile::exists(found));
    }

    void aRaceLogIsKnownByItsName() {
        QMimeDatabase types;
        const QMimeType type = types.mimeTypeForFile(QStringLiteral("/tracks/Car 12.trl"),
                                                     QMimeDatabase::MatchExtension);
        QCOMPARE(type.name(), RaceLogType);
        QVERIFY(type.inherits(QStringLiteral("application/vnd.sqlite3")));
        QCOMPARE(type.comment(), QStringLiteral("Tarnwick race log"));
    }

    // A race log renamed by hand is still one by its contents; any other SQLite file is not.
    void aRenamedRaceLogIsKnownByItsContents() {
        TestHome home;
        const QString renamed = home.root() + QStringLiteral("/car12.db");
        const QString other = home.root() + QStringLiteral("/other.db");
        QVERIFY(writeSqlite(renamed, true));
        QVERIFY(writeSqlite(other, false));
        QFile header(renamed);
        QVERIFY(header.open(QIODevice::ReadOnly));
        QCOMPARE(header.read(72).mid(68), QByteArray("TRL1"));
        QMimeDatabase types;
        QCOMPARE(types.mimeTypeForFile(renamed, QMimeDatabase::MatchContent).name(), RaceLogType);
        QCOMPARE(types.mimeTypeForFile(other, QMimeDatabase::MatchContent).name(),
                 QStringLiteral("application/vnd.sqlite3"));
    }
};

QTEST_GUILESS_MAIN(TestShippedFiles)
#include "tst_shippedfiles.moc"
