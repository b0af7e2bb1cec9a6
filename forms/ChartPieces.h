#pragma once
// Widgets that the dialogs of the chart share.

#include "chart/records/Colors.h"
#include "forms/Pieces.h"

#include <QIcon>
#include <QSize>

#include <functional>

class QComboBox;

namespace Quillon {

// A list of one visible row, bound to a control's Items and Value; chosen gets the row that the user takes.
// The wheel leaves it alone: it belongs to whatever scrolls behind the list. dress is run on new items.
QComboBox* MakeCombo(Binder& bind, ControlRef control, std::function<void(int)> chosen,
                     std::function<void(QComboBox*)> dress = {});

// A colour as it will be drawn, 28 by 14 pixels, with an edge so that it shows on a ground of its own kind.
// The row that is chosen in a list shows it as it is, too.
QIcon Swatch(ChartColor color);
inline constexpr QSize SwatchSize{28, 14};

// Each colour as a swatch before its name, and each font in its own letters: for MakeCombo.
void DressColors(QComboBox* box);
void DressFonts(QComboBox* box);

// The sample of a text on the background of the graph, as ShowSample of chart/dialogs/OptionLists.h fills it.
QLabel* MakePreview(Binder& bind, ControlRef control);

// A label with an access key before its field, in two columns of a grid.
void AddRow(Binder& bind, QGridLayout* grid, int row, int column, ControlRef caption, QWidget* field);

// The buttons at the foot.
QHBoxLayout* OkAndCancel(Binder& bind, ControlRef ok, void (*onOk)(), ControlRef cancel, void (*onCancel)());

} // namespace Quillon
