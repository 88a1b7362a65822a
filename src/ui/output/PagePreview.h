#pragma once

#include <QWidget>

class PageDocument;

// The picture of one page of a document, drawn at a zoom factor: 1 shows the page at its
// size on paper. It is the control named "VPE" that fills a viewer.
class PagePreview : public QWidget {
    Q_OBJECT
public:
    explicit PagePreview(QWidget* parent = nullptr);

    void showPage(const PageDocument& document, int page, double scale);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const PageDocument* document = nullptr;
    int page = 0;
    double scale = 1;
};
