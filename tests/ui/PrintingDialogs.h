#pragma once

#include "core/ScriptedDialogs.h"

#include <QPrinter>

// Scripted dialogs that send every print to a PDF file instead of paper. A print without a
// dialog goes ahead as the script says (queuePrinter); a print dialog is accepted when a file
// to print to is named, and cancelled otherwise.
class PrintingDialogs : public ScriptedDialogs {
public:
    bool usePrinter(QPagedPaintDevice& device) override {
        return ScriptedDialogs::usePrinter(device) && toFile(device);
    }
    bool choosePrinter(QPagedPaintDevice& device) override {
        ScriptedDialogs::choosePrinter(device);
        return !printTo.isEmpty() && toFile(device);
    }

    QString printTo;

private:
    bool toFile(QPagedPaintDevice& device) const {
        auto* printer = dynamic_cast<QPrinter*>(&device);
        if (!printer)
            return false;
        printer->setOutputFormat(QPrinter::PdfFormat);
        printer->setOutputFileName(printTo);
        return true;
    }
};
