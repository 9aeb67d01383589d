// basStockVerification: the routines that the module's forms share.
#pragma once

#include "vb/Variant.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace forms {
class FlexGrid;
class ListView;
} // namespace forms

namespace tqsv2731 {

class Module;

/// Enter moves on as Tab does: for character 13 the keystroke "{TAB}" is
/// queued for the event loop. The key itself is left as it is.
void EnterAsTab(Module &m, int &KeyAscii);

/// Brings the register's row of one entry up to date after a save or a
/// delete: the register's own statement, narrowed by `criterion` (such as
/// " svhID=12"), is read again. In mode "E" the grid's current row is
/// overwritten (all but column 0), so callers must not move it first; a new
/// entry fills the empty grid's blank row or is added at the end and
/// selected. No row (an entry outside the floor date) changes nothing.
/// Failures go to the caller.
void UpdateEditedRow(Module &m, std::string_view criterion, std::int32_t id);

/// Widths and alignments of a list view's columns from `alistviewdetails`,
/// for the list found by transaction name, the list's name and the module
/// name. A list with no rows there keeps its design layout.
void ApplyListViewLayout(Module &m, std::string_view strTransName, forms::ListView &lvw,
                         std::string_view strModuleName);

/// Number formats over whole columns of a list. Each text of the map reads
/// "column:decimals": the first character is the column (0 the row's own
/// text, n sub-item n) and the last the decimals; 2 formats "##0.00", 3
/// "##0.000", anything else leaves the column alone. Text that is no number
/// stays as it is. An empty list is left at once.
void FormatListViewColumns(forms::ListView &lvw, const std::vector<vb::Variant> &map);

/// The value of a key in the plain-text settings file, whose lines read
/// key, one filler character, ":=", value. Reads on channel 3. A missing key
/// shows "{key}  invalid parameter in Settings.ini file" and gives
/// "NotFound"; a missing file shows " Settings.ini file not found"; every
/// failure is reported and gives Empty. A line without ":=" fails while the
/// channel is open, and the channel stays open.
vb::Variant FileCode(Module &m, std::string_view strKey, std::string_view strFileName);

/// Removes, from the last row up to row 1, every row whose cell in `col`
/// equals `key` exactly.
void RemoveGridRows(forms::FlexGrid &grid, std::int16_t col, std::string_view key);

/// True when the item has a number of expiry days above zero.
bool ItemHasExpiryDays(Module &m, std::int32_t itemId);

/// Adds a party's currency and selling rate to a rate list and gives the new
/// list. Kinds: "V" vendor, "C" customer, "D" department, "A" account,
/// "Z" company, "B" the company's cash group (the party id is not used). A
/// party without a rate gives Empty, so a caller that stores the result
/// loses its list. An unknown kind fails on the open.
vb::Variant AddExchangeRate(Module &m, std::string_view strRateList, std::string_view strKind,
                            std::int32_t partyId);

/// True when the id equals the number of any id in the rate arrays.
bool IsCurrencyListed(Module &m, double currencyId);

/// The rate of currency two over the rate of currency one, by the session's
/// rate list; 1 when either is missing or zero, and for an empty list.
double GetRateRatio(Module &m, std::int16_t currencyOne, std::int16_t currencyTwo);

/// The currency of a party: "Z" the company (the id is not used), "D" a
/// department, "V" a vendor, "A" an account; 0 when there is no row.
std::int16_t GetCurrencyId(Module &m, std::string_view strKind, std::int32_t partyId);

/// The name of a user (`loUsers.UserName`), empty when there is none.
std::string GetUserName(Module &m, std::int16_t userId);

/// The unit code of an item.
std::string GetItemUnitCode(Module &m, std::int32_t itemId);

/// Splits a rate list into the module's working arrays (the two halves, the
/// ids, the rates), each half without its empty last piece.
void SplitRateList(Module &m, std::string_view strRateList);

} // namespace tqsv2731
