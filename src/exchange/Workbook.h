#pragma once

#include <QByteArray>
#include <QString>
#include <memory>
#include <optional>

namespace pugi {
class xml_document;
}

// A spreadsheet workbook (.xlsx) filled in from a template. The template's bytes are read once;
// cells are set on the sheet the workbook opens on; bytes() gives the new workbook. Every other
// part of the template (its other sheets, styles, formulas, charts, names, column widths) is
// carried over as it was: only the opening sheet and the workbook part itself are rewritten,
// the latter so that the spreadsheet program works every formula out again when it opens the
// file.
class Workbook {
public:
    // nullopt when the bytes are no workbook: not a zip archive, or one without a workbook part
    // and a sheet it names.
    static std::optional<Workbook> fromTemplate(const QByteArray& bytes);

    Workbook(Workbook&&) noexcept;
    Workbook& operator=(Workbook&&) noexcept;
    ~Workbook();

    // The path of the sheet the cells go to inside the archive ("xl/worksheets/sheet1.xml").
    QString sheetPath() const { return sheet; }

    // Rows and columns count from 1, as the spreadsheet shows them. A cell keeps its style; what
    // it held before (a value, a formula) gives way.
    void setText(int row, int column, const QString& text);
    void setNumber(int row, int column, double value);
    // The cell keeps its style and holds nothing.
    void clear(int row, int column);

    // The filled-in workbook; nullopt when the archive cannot be written.
    std::optional<QByteArray> bytes() const;

private:
    Workbook();

    QByteArray original;
    QString workbookPart;
    QString sheet;
    std::unique_ptr<pugi::xml_document> workbookXml;
    std::unique_ptr<pugi::xml_document> sheetXml;
};
