#pragma once
// How the rows of a form with one row for each parameter fall into columns and pages.

namespace Quillon {

// How rows that do not fit one column are spread: two columns where both have room, then two pages.
struct RowLayout {
    int Rows = 0;
    int RowsPerColumn = 16; // that fit the form's height
    int MostColumns = 2;    // that fit the screen's width
    int Columns() const { return Rows > RowsPerColumn && MostColumns > 1 ? 2 : 1; }
    int RowsPerPage() const { return Columns() * RowsPerColumn; }
    bool Paged() const { return Rows > RowsPerPage(); }
    // The rows first..last (last not included) of page 0 or 1. The second page takes all that remain.
    int First(int page) const { return page == 0 ? 0 : RowsPerPage(); }
    int Last(int page) const { return page == 0 && Paged() ? RowsPerPage() : Rows; }
    int PageOf(int row) const { return Paged() && row >= RowsPerPage() ? 1 : 0; }
};

} // namespace Quillon
