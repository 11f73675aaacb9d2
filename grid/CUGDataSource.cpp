// The base data source: nothing supported, everything allowed.
#include "grid/CUGDataSource.h"

#include "grid/CUGSortCompare.h"

int CUGDataSource::AppendRow() { return -1; }
int CUGDataSource::InsertRow(long) { return -1; }
int CUGDataSource::AppendCol() { return -1; }
int CUGDataSource::InsertCol(int) { return -1; }
int CUGDataSource::DeleteRow(long) { return -1; }
int CUGDataSource::DeleteCol(int) { return -1; }
int CUGDataSource::DeleteCell(int, long) { return -1; }
int CUGDataSource::Empty() { return -1; }
int CUGDataSource::GetCell(int, long, CUGCell*) { return -1; }
int CUGDataSource::SetCell(int, long, const CUGCell*) { return -1; }
int CUGDataSource::FindFirst(std::wstring_view, int*, long*, long) { return -1; }
int CUGDataSource::FindNext(std::wstring_view, int*, long*, long) { return -1; }
int CUGDataSource::SortBy(const int*, int, int) { return -1; }
int CUGDataSource::SortBy(int, int) { return -1; }
int CUGDataSource::OnHitBottom(long, long, long*) { return -1; }
void CUGDataSource::OnRowChange(long, long) {}
void CUGDataSource::OnColChange(int, int) {}
int CUGDataSource::OnCanMove(int, long, int, long) { return 1; }
int CUGDataSource::OnCanContinueEdit(int, long, int*, long*) { return 1; }

int CUGDataSource::Compare(const CUGCell* cell1, const CUGCell* cell2, int flags) const {
    return m_sortCompare ? m_sortCompare->OnSortCompare(cell1, cell2, flags)
                         : UGDefaultSortCompare(cell1, cell2, flags);
}
