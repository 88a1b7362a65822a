#!/usr/bin/env python3
"""Makes the standard spreadsheet template, data/Bramholdtrack.xlsx.

The run sheet "Runs" names in column A each row the export fills, one sheet column per run
from column B on. A second sheet works out a summary of the runs with formulas, so a team can
see the template's own sheets, styles, formulas and names come through an export unchanged.

Run it again after a change: python3 scripts/make-template.py (needs python3-openpyxl). The
archive's dates are fixed, so the same script gives the same bytes.
"""
import datetime
import io
import pathlib
import zipfile

from openpyxl import Workbook
from openpyxl.styles import Font, PatternFill
from openpyxl.workbook.defined_name import DefinedName

ROWS = {
    3: "Race Track",
    4: "Date",
    5: "Time",
    6: "Lane",
    8: "Barometer (ABP)",
    9: "Temperature",
    10: "Relative Humidity",
    11: "Adjusted Altitude",
    12: "Vapor Pressure",
    13: "Density Altitude",
    14: "Wind Direction",
    21: "Timer 1",
    22: "Timer 2",
    23: "Shift Time",
    26: "Delay Box",
    27: "Reaction Time",
    28: "60 ft",
    29: "330 ft",
    30: "660 ft",
    31: "660 MPH",
    32: "1000 ft",
    33: "1000 MPH",
    34: "1320 ft (ET)",
    35: "1320 MPH",
    36: "Dial-In",
    38: "Notes",
}
RUN_COLUMNS = 40  # room for a long event: runs in B to AO
FIXED = datetime.datetime(2026, 1, 1)


def build():
    book = Workbook()
    runs = book.active
    runs.title = "Runs"
    runs["A1"] = "Tarnwick Race Log"
    runs["A1"].font = Font(bold=True, size=14)
    label = Font(bold=True)
    for row, text in ROWS.items():
        runs.cell(row=row, column=1, value=text).font = label
    runs.column_dimensions["A"].width = 22
    shade = PatternFill("solid", fgColor="FFF2CC")
    last = runs.cell(row=1, column=RUN_COLUMNS + 1).column_letter
    for column in range(2, RUN_COLUMNS + 2):
        runs.cell(row=34, column=column).number_format = "0.000"
        runs.cell(row=34, column=column).fill = shade
    # The margin of each run over its dial-in, worked out by the sheet itself.
    runs.cell(row=40, column=1, value="ET - Dial-In").font = label
    for column in range(2, RUN_COLUMNS + 2):
        letter = runs.cell(row=1, column=column).column_letter
        runs.cell(row=40, column=column, value=f'=IF({letter}34="","",{letter}34-{letter}36)')

    summary = book.create_sheet("Summary")
    summary["A1"] = "Runs"
    summary["B1"] = f"=COUNT(Runs!B34:{last}34)"
    summary["A2"] = "Best ET"
    summary["B2"] = f'=IF(B1=0,"",MIN(Runs!B34:{last}34))'
    summary["B2"].number_format = "0.000"
    summary.column_dimensions["A"].width = 14

    book.defined_names.append(DefinedName("ETs", attr_text=f"Runs!$B$34:${last}$34"))
    book.properties.creator = "Tarnwick"
    book.properties.created = FIXED
    book.properties.modified = FIXED
    book.active = 0
    return book


def fixed_dates(data):
    """The archive again with every entry dated FIXED."""
    out = io.BytesIO()
    with zipfile.ZipFile(io.BytesIO(data)) as source, zipfile.ZipFile(
        out, "w", zipfile.ZIP_DEFLATED
    ) as target:
        for info in source.infolist():
            entry = zipfile.ZipInfo(info.filename, date_time=FIXED.timetuple()[:6])
            entry.compress_type = zipfile.ZIP_DEFLATED
            target.writestr(entry, source.read(info.filename))
    return out.getvalue()


def main():
    buffer = io.BytesIO()
    build().save(buffer)
    path = pathlib.Path(__file__).resolve().parent.parent / "data" / "Bramholdtrack.xlsx"
    path.write_bytes(fixed_dates(buffer.getvalue()))
    print(path)


if __name__ == "__main__":
    main()
