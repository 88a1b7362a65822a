#include "exchange/Workbook.h"

#include <QDir>
#include <QLocale>
#include <QStringList>
#include <QtGlobal>
#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <pugixml.hpp>
#include <string>
#include <string_view>
#include <zip.h>

namespace {

// The limits of a sheet in the spreadsheet program.
constexpr int MaxRow = 1048576;
constexpr int MaxColumn = 16384;

constexpr unsigned ParseOptions =
    pugi::parse_default | pugi::parse_declaration | pugi::parse_ws_pcdata;

// --- The archive ---

struct ArchiveDeleter {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, ArchiveDeleter>;

// The archive's own copy of the bytes, in memory it frees itself. Writing an archive back
// into its buffer can keep the unchanged front of the old buffer in the new one and free it
// later, which libzip may only do with memory it owns.
zip_source_t* ownedBuffer(const QByteArray& bytes, zip_error_t* error) {
    void* copy = std::malloc(size_t(qMax<qsizetype>(bytes.size(), 1)));
    if (!copy)
        return nullptr;
    std::memcpy(copy, bytes.constData(), size_t(bytes.size()));
    zip_source_t* source = zip_source_buffer_create(copy, zip_uint64_t(bytes.size()), 1, error);
    if (!source)
        std::free(copy);
    return source;
}

// Opens an archive over bytes that must outlive it. With keep, the archive is to be written:
// it works on a copy of its own, and the source stays alive after the archive is closed, so
// the written archive can be read back from it.
Archive openArchive(const QByteArray& bytes, zip_source_t** keep = nullptr) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source =
        keep ? ownedBuffer(bytes, &error)
             : zip_source_buffer_create(bytes.constData(), zip_uint64_t(bytes.size()), 0, &error);
    zip_error_fini(&error);
    if (!source)
        return {};
    zip_error_init(&error);
    zip_t* archive = zip_open_from_source(source, 0, &error);
    zip_error_fini(&error);
    if (!archive) {
        zip_source_free(source);
        return {};
    }
    if (keep) {
        zip_source_keep(source);
        *keep = source;
    }
    return Archive(archive);
}

std::optional<QByteArray> readEntry(zip_t* archive, const QString& name) {
    const QByteArray path = name.toUtf8();
    zip_stat_t stat;
    zip_stat_init(&stat);
    if (zip_stat(archive, path.constData(), 0, &stat) != 0 || !(stat.valid & ZIP_STAT_SIZE))
        return std::nullopt;
    // A part of a workbook is small; a size beyond this is a broken or hostile archive.
    if (stat.size > zip_uint64_t(256) * 1024 * 1024)
        return std::nullopt;
    zip_file_t* file = zip_fopen(archive, path.constData(), 0);
    if (!file)
        return std::nullopt;
    QByteArray data(qsizetype(stat.size), Qt::Uninitialized);
    const zip_int64_t read = zip_fread(file, data.data(), stat.size);
    zip_fclose(file);
    if (read < 0 || zip_uint64_t(read) != stat.size)
        return std::nullopt;
    return data;
}

bool parse(pugi::xml_document& document, const QByteArray& data) {
    return document.load_buffer(data.constData(), size_t(data.size()), ParseOptions,
                                pugi::encoding_utf8);
}

QByteArray serialise(const pugi::xml_document& document) {
    struct Writer : pugi::xml_writer {
        QByteArray out;
        void write(const void* data, size_t size) override {
            out.append(static_cast<const char*>(data), qsizetype(size));
        }
    } writer;
    document.save(writer, "", pugi::format_raw, pugi::encoding_utf8);
    return writer.out;
}

// --- Names in the parts ---

// Generators differ in the prefix they give the spreadsheet namespace ("x:c" or "c"); the
// local name is what counts.
std::string_view localName(const pugi::xml_node node) {
    const std::string_view name = node.name();
    const auto colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

std::string prefixOf(const pugi::xml_node node) {
    const std::string_view name = node.name();
    const auto colon = name.find(':');
    return colon == std::string_view::npos ? std::string() : std::string(name.substr(0, colon + 1));
}

pugi::xml_node child(const pugi::xml_node parent, std::string_view name) {
    for (pugi::xml_node node : parent.children())
        if (node.type() == pugi::node_element && localName(node) == name)
            return node;
    return {};
}

// The relationship id of a sheet stands in an attribute of the relationships namespace,
// usually "r:id".
pugi::xml_attribute relationshipId(const pugi::xml_node node) {
    for (pugi::xml_attribute attribute : node.attributes()) {
        const std::string_view name = attribute.name();
        if (name.size() > 3 && name.substr(name.size() - 3) == ":id")
            return attribute;
    }
    return {};
}

// The part a relationship points to, as a path inside the archive. A target is relative to the
// folder of the part the relationships belong to, or absolute from the archive's root.
QString resolveTarget(const QString& sourceFolder, const QString& target) {
    if (target.startsWith(u'/'))
        return QDir::cleanPath(target.mid(1));
    return QDir::cleanPath(sourceFolder.isEmpty() ? target : sourceFolder + u'/' + target);
}

QString folderOf(const QString& part) {
    const qsizetype slash = part.lastIndexOf(u'/');
    return slash < 0 ? QString() : part.left(slash);
}

QString relationshipsOf(const QString& part) {
    const QString folder = folderOf(part);
    const QString file = part.mid(folder.isEmpty() ? 0 : folder.size() + 1);
    return (folder.isEmpty() ? QString() : folder + u'/') + QStringLiteral("_rels/") + file +
           QStringLiteral(".rels");
}

// The target of the first relationship of a kind (the end of its type URI), or of an id.
QString findRelationship(const pugi::xml_document& relationships, std::string_view typeEnd,
                         std::string_view id = {}) {
    for (pugi::xml_node node : child(relationships, "Relationships").children()) {
        if (localName(node) != "Relationship")
            continue;
        if (!id.empty()) {
            if (std::string_view(node.attribute("Id").value()) == id)
                return QString::fromUtf8(node.attribute("Target").value());
            continue;
        }
        const std::string_view type = node.attribute("Type").value();
        if (type.size() >= typeEnd.size() && type.substr(type.size() - typeEnd.size()) == typeEnd)
            return QString::fromUtf8(node.attribute("Target").value());
    }
    return {};
}

// --- Cell references ---

std::string columnLetters(int column) {
    std::string letters;
    for (; column > 0; column = (column - 1) / 26)
        letters.insert(letters.begin(), char('A' + (column - 1) % 26));
    return letters;
}

std::string reference(int row, int column) {
    return columnLetters(column) + std::to_string(row);
}

struct Position {
    int row = 0;
    int column = 0;
};

// "B12" as row 12, column 2; zeros for what is missing or out of range.
Position parseReference(std::string_view text) {
    Position at;
    size_t i = 0;
    for (; i < text.size() && text[i] >= 'A' && text[i] <= 'Z'; ++i) {
        at.column = at.column * 26 + (text[i] - 'A' + 1);
        if (at.column > MaxColumn)
            return {};
    }
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        at.row = at.row * 10 + (text[i] - '0');
        if (at.row > MaxRow)
            return {};
    }
    return i == text.size() ? at : Position{};
}

int parseRowNumber(const char* text) {
    int row = 0;
    for (const char* c = text; *c; ++c) {
        if (*c < '0' || *c > '9' || row > MaxRow)
            return 0;
        row = row * 10 + (*c - '0');
    }
    return row;
}

pugi::xml_node appendRow(pugi::xml_node sheetData, const std::string& prefix, int row) {
    pugi::xml_node added = sheetData.append_child((prefix + "row").c_str());
    added.append_attribute("r").set_value(row);
    return added;
}

// Rows and cells may leave out their reference, which then follows the one before. A row or
// cell about to get neighbours is given its reference, so the order holds without them.
pugi::xml_node rowOf(pugi::xml_node sheetData, int row) {
    const std::string prefix = prefixOf(sheetData);
    // An export writes row after row: the last row, or a row below it, is found at once.
    if (const pugi::xml_node last = sheetData.last_child(); !last)
        return appendRow(sheetData, prefix, row);
    else if (last.type() == pugi::node_element && localName(last) == "row") {
        const int number = parseRowNumber(last.attribute("r").value());
        if (number == row)
            return last;
        if (number > 0 && number < row)
            return appendRow(sheetData, prefix, row);
    }
    int previous = 0;
    for (pugi::xml_node node : sheetData.children()) {
        if (node.type() != pugi::node_element || localName(node) != "row")
            continue;
        int number = parseRowNumber(node.attribute("r").value());
        if (number == 0) {
            number = previous + 1;
            (node.attribute("r") ? node.attribute("r") : node.append_attribute("r"))
                .set_value(number);
        }
        previous = number;
        if (number == row)
            return node;
        if (number > row) {
            pugi::xml_node added = sheetData.insert_child_before((prefix + "row").c_str(), node);
            added.append_attribute("r").set_value(row);
            return added;
        }
    }
    return appendRow(sheetData, prefix, row);
}

pugi::xml_node cellOf(pugi::xml_node rowNode, int row, int column) {
    const std::string prefix = prefixOf(rowNode);
    const std::string wanted = reference(row, column);
    // The column span of a row is a hint for the reader that a new cell may make wrong.
    rowNode.remove_attribute("spans");
    // An export writes a row from left to right: the last cell, or one right of it, is found
    // at once.
    if (const pugi::xml_node last = rowNode.last_child();
        last && last.type() == pugi::node_element && localName(last) == "c") {
        const int number = parseReference(last.attribute("r").value()).column;
        if (number == column)
            return last;
        if (number > 0 && number < column) {
            pugi::xml_node added = rowNode.append_child((prefix + "c").c_str());
            added.append_attribute("r").set_value(wanted.c_str());
            return added;
        }
    }
    int previous = 0;
    for (pugi::xml_node node : rowNode.children()) {
        if (node.type() != pugi::node_element || localName(node) != "c")
            continue;
        int number = parseReference(node.attribute("r").value()).column;
        if (number == 0) {
            number = previous + 1;
            (node.attribute("r") ? node.attribute("r") : node.append_attribute("r"))
                .set_value(reference(row, number).c_str());
        }
        previous = number;
        if (number == column)
            return node;
        if (number > column) {
            pugi::xml_node added = rowNode.insert_child_before((prefix + "c").c_str(), node);
            added.append_attribute("r").set_value(wanted.c_str());
            return added;
        }
    }
    pugi::xml_node added = rowNode.append_child((prefix + "c").c_str());
    added.append_attribute("r").set_value(wanted.c_str());
    return added;
}

// Characters XML cannot carry are left out of a text.
std::string xmlText(const QString& text) {
    QString clean;
    clean.reserve(text.size());
    for (const QChar c : text)
        if (c.unicode() >= 0x20 || c == u'\t' || c == u'\n' || c == u'\r')
            clean.append(c);
    return clean.toStdString();
}

} // namespace

// --- Reading the template ---

Workbook::Workbook()
    : workbookXml(std::make_unique<pugi::xml_document>()),
      sheetXml(std::make_unique<pugi::xml_document>()) {}
Workbook::Workbook(Workbook&&) noexcept = default;
Workbook& Workbook::operator=(Workbook&&) noexcept = default;
Workbook::~Workbook() = default;

std::optional<Workbook> Workbook::fromTemplate(const QByteArray& bytes) {
    Workbook book;
    book.original = bytes;
    const Archive archive = openArchive(book.original);
    if (!archive)
        return std::nullopt;

    // The package names its workbook part; the workbook names its sheets in tab order and
    // which tab it opens on.
    pugi::xml_document package;
    const auto packageRels = readEntry(archive.get(), QStringLiteral("_rels/.rels"));
    if (!packageRels || !parse(package, *packageRels))
        return std::nullopt;
    book.workbookPart = resolveTarget({}, findRelationship(package, "/officeDocument"));
    const auto workbookData = readEntry(archive.get(), book.workbookPart);
    if (book.workbookPart.isEmpty() || !workbookData || !parse(*book.workbookXml, *workbookData))
        return std::nullopt;
    const pugi::xml_node workbook = child(*book.workbookXml, "workbook");
    const pugi::xml_node view = child(child(workbook, "bookViews"), "workbookView");
    const int openingTab = view.attribute("activeTab").as_int(0);
    pugi::xml_node sheetEntry;
    int tab = 0;
    for (pugi::xml_node node : child(workbook, "sheets").children()) {
        if (node.type() != pugi::node_element || localName(node) != "sheet")
            continue;
        if (!sheetEntry || tab == openingTab)
            sheetEntry = node;
        if (tab++ == openingTab)
            break;
    }
    const pugi::xml_attribute id = relationshipId(sheetEntry);
    if (!id)
        return std::nullopt;

    pugi::xml_document workbookRels;
    const auto workbookRelsData = readEntry(archive.get(), relationshipsOf(book.workbookPart));
    if (!workbookRelsData || !parse(workbookRels, *workbookRelsData))
        return std::nullopt;
    const QString target = findRelationship(workbookRels, {}, id.value());
    if (target.isEmpty())
        return std::nullopt;
    book.sheet = resolveTarget(folderOf(book.workbookPart), target);
    const auto sheetData = readEntry(archive.get(), book.sheet);
    if (!sheetData || !parse(*book.sheetXml, *sheetData) ||
        !child(child(*book.sheetXml, "worksheet"), "sheetData"))
        return std::nullopt;
    return book;
}

// --- Setting cells ---

namespace {

// Empties a cell of its value, keeping its style: the formula, value and text go, and the
// type with them.
void emptyCell(pugi::xml_node cell) {
    for (pugi::xml_node node = cell.first_child(); node;) {
        const pugi::xml_node next = node.next_sibling();
        cell.remove_child(node);
        node = next;
    }
    cell.remove_attribute("t");
    cell.remove_attribute("cm");
    cell.remove_attribute("vm");
}

// Widens the sheet's used range, which readers may take as the extent of the sheet.
void widenDimension(pugi::xml_node worksheet, int row, int column) {
    pugi::xml_node dimension = child(worksheet, "dimension");
    if (!dimension)
        return;
    const std::string_view ref = dimension.attribute("ref").value();
    const auto colon = ref.find(':');
    Position first = parseReference(ref.substr(0, colon));
    Position last = colon == std::string_view::npos ? first : parseReference(ref.substr(colon + 1));
    if (first.row == 0 || first.column == 0 || last.row == 0 || last.column == 0) {
        first = last = {row, column};
    }
    first = {std::min(first.row, row), std::min(first.column, column)};
    last = {std::max(last.row, row), std::max(last.column, column)};
    const std::string range =
        reference(first.row, first.column) + ':' + reference(last.row, last.column);
    (dimension.attribute("ref") ? dimension.attribute("ref") : dimension.append_attribute("ref"))
        .set_value(range.c_str());
}

pugi::xml_node preparedCell(pugi::xml_document& sheet, int row, int column) {
    if (row < 1 || row > MaxRow || column < 1 || column > MaxColumn)
        return {};
    const pugi::xml_node worksheet = child(sheet, "worksheet");
    widenDimension(worksheet, row, column);
    pugi::xml_node cell = cellOf(rowOf(child(worksheet, "sheetData"), row), row, column);
    emptyCell(cell);
    return cell;
}

} // namespace

void Workbook::setText(int row, int column, const QString& text) {
    pugi::xml_node cell = preparedCell(*sheetXml, row, column);
    if (!cell)
        return;
    const std::string prefix = prefixOf(cell);
    cell.append_attribute("t").set_value("inlineStr");
    pugi::xml_node t =
        cell.append_child((prefix + "is").c_str()).append_child((prefix + "t").c_str());
    const std::string value = xmlText(text);
    // Blanks at either end are dropped by readers unless the text says to keep them.
    if (!value.empty() && (std::isspace(static_cast<unsigned char>(value.front())) ||
                           std::isspace(static_cast<unsigned char>(value.back()))))
        t.append_attribute("xml:space").set_value("preserve");
    t.text().set(value.c_str());
}

void Workbook::setNumber(int row, int column, double value) {
    if (!std::isfinite(value)) {
        clear(row, column);
        return;
    }
    pugi::xml_node cell = preparedCell(*sheetXml, row, column);
    if (!cell)
        return;
    const QByteArray number = QByteArray::number(value, 'g', QLocale::FloatingPointShortest);
    cell.append_child((prefixOf(cell) + "v").c_str()).text().set(number.constData());
}

void Workbook::clear(int row, int column) {
    preparedCell(*sheetXml, row, column);
}

// --- Writing ---

namespace {

// The workbook is to be worked out again on opening: the values cached in the template's
// formulas were worked out from cells that now hold other values. The calculation settings
// stand after these parts of the workbook, in this order.
void markForRecalculation(pugi::xml_document& document) {
    pugi::xml_node workbook = child(document, "workbook");
    pugi::xml_node calcPr = child(workbook, "calcPr");
    if (!calcPr) {
        pugi::xml_node after;
        for (const char* name : {"sheets", "functionGroups", "externalReferences", "definedNames"})
            if (pugi::xml_node node = child(workbook, name))
                after = node;
        const std::string name = prefixOf(workbook) + "calcPr";
        calcPr = after ? workbook.insert_child_after(name.c_str(), after)
                       : workbook.append_child(name.c_str());
    }
    (calcPr.attribute("fullCalcOnLoad") ? calcPr.attribute("fullCalcOnLoad")
                                        : calcPr.append_attribute("fullCalcOnLoad"))
        .set_value("1");
}

bool replaceEntry(zip_t* archive, const QString& name, const QByteArray& data) {
    const zip_int64_t index = zip_name_locate(archive, name.toUtf8().constData(), 0);
    if (index < 0)
        return false;
    zip_source_t* source =
        zip_source_buffer(archive, data.constData(), zip_uint64_t(data.size()), 0);
    if (!source)
        return false;
    if (zip_file_replace(archive, zip_uint64_t(index), source, 0) != 0) {
        zip_source_free(source);
        return false;
    }
    return true;
}

std::optional<QByteArray> readSource(zip_source_t* source) {
    if (zip_source_open(source) != 0)
        return std::nullopt;
    QByteArray out;
    char buffer[65536];
    zip_int64_t read = 0;
    while ((read = zip_source_read(source, buffer, sizeof buffer)) > 0)
        out.append(buffer, qsizetype(read));
    zip_source_close(source);
    if (read < 0)
        return std::nullopt;
    return out;
}

} // namespace

std::optional<QByteArray> Workbook::bytes() const {
    pugi::xml_document workbook;
    workbook.reset(*workbookXml);
    markForRecalculation(workbook);
    // The new parts must live until the archive is closed.
    const QByteArray workbookData = serialise(workbook);
    const QByteArray sheetData = serialise(*sheetXml);

    zip_source_t* written = nullptr;
    Archive archive = openArchive(original, &written);
    if (!archive)
        return std::nullopt;
    struct SourceDeleter {
        void operator()(zip_source_t* source) const { zip_source_free(source); }
    };
    const std::unique_ptr<zip_source_t, SourceDeleter> keep(written);
    if (!replaceEntry(archive.get(), workbookPart, workbookData) ||
        !replaceEntry(archive.get(), sheet, sheetData))
        return std::nullopt;
    if (zip_close(archive.get()) != 0)
        return std::nullopt;
    (void)archive.release();
    return readSource(written);
}
