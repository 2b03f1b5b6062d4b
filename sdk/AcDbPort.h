// Marks what the host library exports to modules: the database interface stays reachable from modules
// (which are built with hidden visibility) whatever visibility the host library itself is built with.
#pragma once

#define ACDB_PORT __attribute__((visibility("default")))
