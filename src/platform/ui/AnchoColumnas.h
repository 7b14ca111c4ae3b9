#pragma once

class QTableView;
class QTreeView;

namespace korven {

// Widest a column grows to fit its texts; longer texts are cut with an ellipsis.
inline constexpr int AnchoColumnaMaximo = 360;

// Sizes every visible column of a list or grid to its header and texts, not beyond the maximum.
// A last column that stretches keeps the room left to it. Call it once the rows are in.
// Columns before "desde" keep their width.
void AjustarColumnas(QTreeView* lista, int maximo = AnchoColumnaMaximo, int desde = 0);
void AjustarColumnas(QTableView* grilla, int maximo = AnchoColumnaMaximo, int desde = 0);

} // namespace korven
