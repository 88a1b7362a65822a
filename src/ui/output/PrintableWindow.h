#pragma once

// A window that the main window's Print and PDF Export commands work on: it prints itself,
// with the print dialog, and saves itself as PDF, asking for the file.
class PrintableWindow {
public:
    virtual ~PrintableWindow() = default;
    virtual void printDocument() = 0;
    virtual void saveAsPdf() = 0;
};
