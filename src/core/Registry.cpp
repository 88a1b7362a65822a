#include "core/Registry.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QPointer>
#include <QSettings>
#include <QStandardPaths>
#include <algorithm>
#include <memory>

#ifndef Q_OS_WIN
#include <sys/stat.h>
#endif

namespace Registry {

namespace {

// "SOFTWARE\Zorvane\Main\Defaults\" becomes the group "SOFTWARE/Zorvane/Main/Defaults".
QString groupOf(const QString& keyPath) {
    QString group = keyPath;
    group.replace(u'\\', u'/');
    while (group.endsWith(u'/'))
        group.chop(1);
    while (group.startsWith(u'/'))
        group.remove(0, 1);
    return group;
}

// The store stays open for the life of the process and keeps the tree in memory. On Windows
// the registry is its own cache. Elsewhere the file is read once and then watched: when it or
// its folder changes (another instance, or a person with an editor), the next read looks
// whether the file is another than the one last read or written, and reads it again only
// then. Between two changes a read touches no file at all, so a feed line costs no look at
// the settings. A write goes through to the file before the call returns, so another
// process reads it at once and a crash right after loses nothing. Where nothing can be
// watched (no event loop, or no folder yet) every read looks. The file is opened anew when
// the settings folder moves, as it does between the homes of tests.
class Store {
public:
    QSettings* open() {
#ifdef Q_OS_WIN
        if (!settings)
            settings = std::make_unique<QSettings>(QStringLiteral("HKEY_CURRENT_USER"),
                                                   QSettings::NativeFormat);
#else
        const QString path = storeFilePath();
        if (!settings || settings->fileName() != path) {
            settings = std::make_unique<QSettings>(path, QSettings::IniFormat);
            localPath = QFile::encodeName(path);
            read = {};
            ++changes;
            stale = true;
        }
        if (stale || !watchingFile || !watcher) {
            stale = false;
            if (fileStamp() != read)
                writeThrough();
            else
                watch();
        }
#endif
        return settings.get();
    }

    quint64 revision() {
        open();
        return changes;
    }

    void writeThrough() {
        ++changes;
        settings->sync();
#ifndef Q_OS_WIN
        read = fileStamp();
        watch();
#endif
    }

private:
#ifndef Q_OS_WIN
    // Watches the file as it now stands and its folder. A save puts a new file in place of
    // the old one, so the file's watch is set anew after each read or write; the folder's
    // watch sees a file put in place by someone else.
    void watch() {
        if (!QCoreApplication::instance())
            return;
        // The watcher goes with the application, while the store lives on to the end.
        if (!watcher) {
            watcher = new QFileSystemWatcher(QCoreApplication::instance());
            QObject::connect(watcher, &QFileSystemWatcher::fileChanged, [this] { stale = true; });
            QObject::connect(watcher, &QFileSystemWatcher::directoryChanged,
                             [this] { stale = true; });
        }
        const QString path = settings->fileName();
        const QString folder = QFileInfo(path).absolutePath();
        for (const QStringList& watched : {watcher->files(), watcher->directories()})
            if (!watched.isEmpty())
                watcher->removePaths(watched);
        watchingFile = QFileInfo::exists(folder) && watcher->addPath(folder) &&
                       QFileInfo::exists(path) && watcher->addPath(path);
    }

    // What tells one version of the file from another: a rewrite in place changes the size or
    // the times, a replacement the inode.
    struct Stamp {
        qint64 size = -1;
        qint64 inode = 0;
        timespec modified{};
        timespec changed{};
        bool operator!=(const Stamp& other) const {
            return size != other.size || inode != other.inode ||
                   modified.tv_sec != other.modified.tv_sec ||
                   modified.tv_nsec != other.modified.tv_nsec ||
                   changed.tv_sec != other.changed.tv_sec ||
                   changed.tv_nsec != other.changed.tv_nsec;
        }
    };
    Stamp fileStamp() const {
        struct stat status {};
        if (::stat(localPath.constData(), &status) != 0)
            return {};
        return {status.st_size, qint64(status.st_ino), status.st_mtim, status.st_ctim};
    }

    QByteArray localPath;
    Stamp read;
    QPointer<QFileSystemWatcher> watcher;
    bool watchingFile = false;
    bool stale = true;
#endif
    std::unique_ptr<QSettings> settings;
    quint64 changes = 0;
};

Store& store() {
    static Store theStore;
    return theStore;
}

QSettings* openHive(Hive hive) {
    return hive == HKEY_CURRENT_USER ? store().open() : nullptr;
}

// Ends a change of the tree: the file holds it when the change returns.
class Change {
public:
    Change() = default;
    ~Change() { store().writeThrough(); }
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;
};

// A name as the store keeps it: the store takes "/" and "\" for the edges of keys, so those
// two, and "%" so that the escape reads back the same, stand as %2F, %5C and %25.
const struct {
    QChar character;
    QLatin1StringView escape;
} Escapes[] = {{u'%', QLatin1StringView("%25")},
               {u'/', QLatin1StringView("%2F")},
               {u'\\', QLatin1StringView("%5C")}};

QString storedName(const QString& name) {
    QString stored;
    stored.reserve(name.size());
    for (QChar c : name) {
        const auto escape = std::find_if(std::begin(Escapes), std::end(Escapes),
                                         [c](const auto& e) { return e.character == c; });
        if (escape != std::end(Escapes))
            stored += escape->escape;
        else
            stored += c;
    }
    return stored;
}

QString nameOf(const QString& stored) {
    QString name;
    name.reserve(stored.size());
    for (qsizetype i = 0; i < stored.size(); ++i) {
        const QStringView rest = QStringView(stored).mid(i, 3);
        const auto escape =
            std::find_if(std::begin(Escapes), std::end(Escapes), [rest](const auto& e) {
                return rest.compare(e.escape, Qt::CaseInsensitive) == 0;
            });
        if (escape != std::end(Escapes)) {
            name += escape->character;
            i += 2;
        } else {
            name += stored[i];
        }
    }
    return name;
}

QStringList namesOf(const QStringList& stored) {
    QStringList names;
    for (const QString& name : stored)
        names << nameOf(name);
    return names;
}

bool keyExists(QSettings& settings, const QString& group) {
    settings.beginGroup(group);
    const bool exists = !settings.childKeys().isEmpty() || !settings.childGroups().isEmpty();
    settings.endGroup();
    return exists;
}

} // namespace

QString keyName(const QString& name) {
    return storedName(name);
}

quint64 revision() {
    return store().revision();
}

QString storeFilePath() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Zorvane/registry.ini");
}

QString keyValue(Hive hive, const QString& keyPath, const QString& valueName) {
    return keyValues(hive, keyPath, {valueName}).constFirst();
}

QStringList keyValues(Hive hive, const QString& keyPath, const QStringList& valueNames) {
    QStringList texts;
    texts.reserve(valueNames.size());
    QSettings* settings = openHive(hive);
    const bool readable = settings && settings->status() == QSettings::NoError;
    const QString group = groupOf(keyPath) + u'/';
    for (const QString& name : valueNames) {
        const QVariant value = readable ? settings->value(group + storedName(name)) : QVariant();
        const QString text = value.typeId() == QMetaType::QDateTime
                                 ? value.toDateTime().toString(Qt::ISODate)
                                 : value.toString();
        texts.append(text.isEmpty() ? NoKeyValue : text);
    }
    return texts;
}

void setKeyValue(Hive hive, const QString& keyPath, const QString& valueName, const QString& value,
                 ValueType type) {
    QSettings* settings = openHive(hive);
    if (!settings)
        return;
    const QString key = groupOf(keyPath) + u'/' + storedName(valueName);
    QVariant stored;
    switch (type) {
    case REG_DWORD:
        stored = value.toInt();
        break;
    case REG_DATE:
        stored = QDateTime::fromString(value, Qt::ISODate).toString(Qt::ISODate);
        break;
    default:
        stored = value;
        break;
    }
    // Writing the value it already holds would rewrite the whole file for nothing, as
    // the settings saved at exit mostly are.
    if (settings->contains(key) && settings->value(key).toString() == stored.toString())
        return;
    const Change change;
    settings->setValue(key, stored);
}

QString deleteKeyValue(Hive hive, const QString& keyPath, const QString& valueName) {
    QSettings* settings = openHive(hive);
    if (!settings)
        return NoKeyValue;
    const QString key = groupOf(keyPath) + u'/' + storedName(valueName);
    if (!settings->contains(key))
        return NoKeyValue;
    const Change change;
    settings->remove(key);
    return QStringLiteral("0");
}

bool deleteKey(Hive hive, const QString& parentPath, const QString& subKey) {
    QSettings* settings = openHive(hive);
    if (!settings || subKey.isEmpty())
        return false;
    const QString group = groupOf(parentPath) + u'/' + storedName(subKey);
    if (!keyExists(*settings, group))
        return false;
    const Change change;
    settings->remove(group);
    return true;
}

bool enumSubKeys(Hive hive, const QString& keyPath, QStringList& names) {
    QSettings* settings = openHive(hive);
    const QString group = groupOf(keyPath);
    if (!settings || !keyExists(*settings, group))
        return false;
    settings->beginGroup(group);
    names = namesOf(settings->childGroups());
    settings->endGroup();
    return true;
}

bool enumValues(Hive hive, const QString& keyPath, QStringList& names) {
    QSettings* settings = openHive(hive);
    const QString group = groupOf(keyPath);
    if (!settings || !keyExists(*settings, group))
        return false;
    settings->beginGroup(group);
    names = namesOf(settings->childKeys());
    settings->endGroup();
    return true;
}

} // namespace Registry
