#include "module/records/DemoDb.h"

#include "vb/Error.h"

namespace records {

DemoInsert::DemoInsert(DemoDb &db, std::string_view table,
                       std::initializer_list<std::string_view> columns)
    : rows_(db.prepareInsert(table, std::span<const std::string_view>(columns.begin(),
                                                                      columns.size()))),
      table_(table), columns_(columns.size()) {}

void DemoInsert::row(std::initializer_list<Cell> cells) {
    if (cells.size() != columns_)
        throw vb::Error(vb::err::InvalidProcedureCall, "records",
                        "A row of " + std::to_string(cells.size()) + " values for the " +
                            std::to_string(columns_) + " columns of " + table_);
    rows_->row(std::span<const Cell>(cells.begin(), cells.size()));
}

} // namespace records
