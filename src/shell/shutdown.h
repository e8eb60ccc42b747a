#pragma once

// Ends the program with status 0. In the foreground it first moves the cursor to the bottom-left
// corner, ends curses and clears the terminal. Also the handler of SIGINT; `signal_number` is not
// used.
[[noreturn]] void Shutdown(int signal_number);
