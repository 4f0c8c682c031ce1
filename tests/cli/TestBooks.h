// Small databases for the tests of the command.
#pragma once

#include "core/platform/Files.h"

namespace tallybook::cli {

// Three records with a cell of every type that can be edited. Fields by slot: 1 Title (Text), 2 Count (Integer),
// 3 Total (Long), 4 Price (Float, 2 decimals), 5 Kind (List: red, green, blue), 6 Done (Checkbox), 7 Day (Date),
// 8 Hour (Time), 9 Notes (Memo), 10 Size (Radio Button: small, large), 11 Number (Auto Incremental), 12 Key (Key),
// 13 Spin (Integer with buttons), 14 Changed (Date, stamped at each change). Categories: home, work.
platform::Bytes smallDatabase();

// The same with passwords: "secret" to open, "change" to change records.
platform::Bytes lockedDatabase();

} // namespace tallybook::cli
