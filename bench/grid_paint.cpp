// Repainting a full-HD grid beside the stock table view with its delegate, in one run: same cells, same font, same
// size, medians and their ratio. At 100 and at 65,448 records, since a repaint must not depend on them.
#include "core/model/Document.h"
#include "desktop/grid/GridView.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QImage>
#include <QTableView>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

namespace {

using namespace tallybook;

constexpr int kRuns = 101;
constexpr int kFields = 20;
constexpr int kTwips = 1410; // 20 columns across the screen
const QSize kScreen(1920, 1080);

std::string cellText(int row, int field) {
    switch (field % 4) {
    case 0:
        return "Title " + std::to_string(row) + "." + std::to_string(field);
    case 1:
        return std::to_string(row * 37 % 100000);
    case 2:
        return std::to_string(row % 12 + 1) + "/" + std::to_string(row % 28 + 1) + "/2003";
    default:
        return std::to_string(row % 1000) + "." + std::to_string(field) + "0";
    }
}

void fill(model::Document& doc, int records) {
    model::clearDocument(doc);
    model::resetRows(doc, records);
    for (int field = 0; field < kFields; ++field) {
        const int column = model::columnOfSlot(field);
        doc.grd.setText(0, column, "Field " + std::to_string(field));
        doc.grd.setColumnWidth(column, kTwips);
        if (field % 4 == 1)
            doc.grd.setAlignment(column, model::Alignment::RightCentre);
        for (int record = 0; record < records; ++record)
            doc.grd.setText(model::kFirstDataRow + record, column, cellText(record, field));
    }
    for (int column = model::columnOfSlot(kFields); column < model::kGridColumns; ++column)
        doc.grd.setColumnWidth(column, 0);
    doc.grd.setRowHeight(1, 0);
    doc.grd.setCell(model::kFirstDataRow, 1);
}

class StockModel : public QAbstractTableModel {
public:
    explicit StockModel(const model::GridModel& grid) : m_grid(grid) {}
    int rowCount(const QModelIndex& = {}) const override { return m_grid.dataRows(); }
    int columnCount(const QModelIndex& = {}) const override { return kFields; }
    QVariant data(const QModelIndex& index, int role) const override {
        const int column = index.column() + 1;
        if (role == Qt::DisplayRole)
            return QString::fromStdString(m_grid.text(index.row() + model::kFirstDataRow, column));
        if (role == Qt::TextAlignmentRole)
            return m_grid.alignment(column) == model::Alignment::RightCentre
                       ? QVariant(Qt::AlignRight | Qt::AlignVCenter)
                       : QVariant(Qt::AlignLeft | Qt::AlignVCenter);
        return {};
    }

private:
    const model::GridModel& m_grid;
};

double medianMilliseconds(QWidget& widget) {
    QImage image(kScreen, QImage::Format_ARGB32_Premultiplied);
    std::vector<qint64> times;
    for (int run = 0; run < kRuns; ++run) {
        QElapsedTimer timer;
        timer.start();
        widget.render(&image);
        times.push_back(timer.nsecsElapsed());
    }
    std::sort(times.begin(), times.end());
    return static_cast<double>(times[kRuns / 2]) / 1e6;
}

double gridTime(model::Document& doc) {
    desktop::GridView view;
    view.resize(kScreen);
    view.setModel(&doc.grd);
    return medianMilliseconds(view);
}

double stockTime(const model::GridModel& grid, int rowHeight) {
    StockModel stock(grid);
    QTableView view;
    view.setModel(&stock);
    view.verticalHeader()->setDefaultSectionSize(rowHeight);
    view.horizontalHeader()->setDefaultSectionSize(kTwips * view.logicalDpiX() / 1440);
    view.resize(kScreen);
    return medianMilliseconds(view);
}

void measure(int records) {
    model::Document doc;
    fill(doc, records);
    desktop::GridView shape;
    shape.resize(kScreen);
    shape.setModel(&doc.grd);
    const int rowHeight = shape.geometry().rowHeight();
    const int cells = kScreen.height() / rowHeight * kFields;
    const double ours = gridTime(doc);
    const double stock = stockTime(doc.grd, rowHeight);
    std::printf("grid_paint records=%d cells=%d ours_ms=%.2f stock_ms=%.2f ratio=%.2f\n", records, cells, ours, stock,
                ours / stock);
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    measure(100);
    measure(65448);
    return 0;
}
