// What stands behind the program's streams.
#pragma once

// Standard error is shown to somebody, not kept in a file.
bool StandardErrorIsTerminal();
