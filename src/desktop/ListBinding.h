#pragma once

#include <QString>
#include <QStringList>

#include "platform/ListView.h"

class QTableView;

namespace oriolemark {

// Makes a table that shows a list model and reports to it its width and the rows that the user
// marks. Only the cells on the screen are asked for. Ctrl+A marks all rows, Ctrl+C copies the
// marked ones; Home and End go to the first and the last row. `pictures` are the names of the
// pictures from picture 1 on.
QTableView& MakeList(const QString& name, const QString& accessibleName, ListView& model,
                     QStringList pictures = {});

}  // namespace oriolemark
