// A stored procedure as its .sql file holds it: a params line, then the body.
#pragma once

#include <string>
#include <string_view>

namespace records {

/// One row of sv_procedure. The file procedures/NAME.sql starts with the line
/// "-- params: @a int,@b varchar(1)"; everything after that line is the body.
struct ProcedureSource {
    std::string name;
    std::string params;
    std::string body;
};

/// Reads a procedure file; `fileName` is "procedures/NAME.sql". A file without the params
/// line raises a vb::Error that names it.
ProcedureSource procedureSource(std::string_view fileName, std::string_view text);

} // namespace records
