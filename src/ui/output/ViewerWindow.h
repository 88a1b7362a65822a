#pragma once

#include "pages/PageDocument.h"
#include "pages/Viewers.h"
#include "ui/output/PrintableWindow.h"

#include <QWidget>

class PagePreview;
class QLabel;
class QMdiArea;
class QScrollArea;

// A window that shows a paged document one page at a time, at the zoom the user keeps
// between documents and runs of the program, and prints it or saves it as PDF. The viewer of
// race log pages and the report viewer are this one window, each set up from its row of the
// viewer table. There is one of each: a new document replaces the window that showed the last.
class ViewerWindow : public QWidget, public PrintableWindow {
    Q_OBJECT
public:
    // Closes the viewer of this kind if one is open, then opens a new one in the MDI area
    // with the document. A caption that is not empty names the window; else it keeps the
    // viewer's own.
    static ViewerWindow* open(QMdiArea& area, Viewers::Kind kind, PageDocument document,
                              const QString& caption);

    ViewerWindow(Viewers::Kind kind, PageDocument document, QWidget* parent = nullptr);

    const PageDocument& document() const { return pages; }
    int currentPage() const { return current + 1; }
    int pageCount() const { return pages.pageCount(); }
    double scale() const { return zoom; }

    void firstPage();
    void lastPage();
    void nextPage();
    void previousPage();
    // A quarter step while below 4 (or above 0.25): 3.9 zooms in to 4.15.
    void zoomIn();
    void zoomOut();

    void printDocument() override;
    void saveAsPdf() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void addTools();
    void setZoom(double scale);
    void showPage(int index);

    Viewers::Kind kind;
    PageDocument pages;
    int current = 0;
    double zoom = 1;
    PagePreview* preview;
    QScrollArea* area;
    QLabel* pageLabel;
};
