#!/usr/bin/env python3
"""Prints what a spreadsheet reader sees in a workbook, as JSON, for the export's tests.

cells: per sheet, each cell holding a value as [type, value, bold, number format], the type
as openpyxl gives it ("n" number, "s" text, "f" formula). names: the defined names. widths:
the set column widths per sheet. recalculate: whether the workbook is worked out on opening.
entries: a SHA-256 of every part of the archive, to show which parts an export rewrote.
inOrder: whether every sheet keeps its rows, and the cells of each row, in ascending order.
"""
import hashlib
import json
import re
import sys
import zipfile
import xml.etree.ElementTree as ElementTree

import openpyxl


MAIN = "{http://schemas.openxmlformats.org/spreadsheetml/2006/main}"


def column_number(reference):
    number = 0
    for letter in re.match("[A-Z]+", reference).group():
        number = number * 26 + ord(letter) - ord("A") + 1
    return number


def in_order(data):
    rows = ElementTree.fromstring(data).iter(MAIN + "row")
    numbers = []
    for row in rows:
        numbers.append(int(row.get("r")))
        columns = [column_number(cell.get("r")) for cell in row.iter(MAIN + "c")]
        if columns != sorted(set(columns)):
            return False
    return numbers == sorted(set(numbers))


def main(path):
    book = openpyxl.load_workbook(path)
    cells = {}
    widths = {}
    for sheet in book.worksheets:
        cells[sheet.title] = {
            cell.coordinate: [cell.data_type, cell.value, bool(cell.font.b), cell.number_format]
            for row in sheet.iter_rows()
            for cell in row
            if cell.value is not None
        }
        widths[sheet.title] = {
            letter: dimension.width
            for letter, dimension in sheet.column_dimensions.items()
            if dimension.customWidth
        }
    names = {name.name: name.attr_text for name in book.defined_names.definedName}
    with zipfile.ZipFile(path) as archive:
        entries = {
            info.filename: hashlib.sha256(archive.read(info.filename)).hexdigest()
            for info in archive.infolist()
        }
        ordered = all(
            in_order(archive.read(name))
            for name in archive.namelist()
            if name.startswith("xl/worksheets/") and name.endswith(".xml")
        )
    calculation = book.calculation
    json.dump(
        {
            "sheets": book.sheetnames,
            "cells": cells,
            "names": names,
            "widths": widths,
            "recalculate": bool(calculation and calculation.fullCalcOnLoad),
            "entries": entries,
            "inOrder": ordered,
        },
        sys.stdout,
    )


if __name__ == "__main__":
    main(sys.argv[1])
