#pragma once

#include <QRectF>
#include <QString>
#include <vector>

namespace orv {

// Where a page is cut, and how far its picture goes: in points from its lower left corner. Null for a page
// that is not cut.
struct PageBoxes {
  QRectF trim, bleed;
};

// Tells the boxes of each page in a PDF file that the writer has finished: an update at the file's end, as
// the format has it. RuntimeError 75 if the file can't be read as one, or written.
void AddPageBoxes(const QString& path, const std::vector<PageBoxes>& pages);

}  // namespace orv
