#pragma once

// Ends the program with status 0: puts the cursor into the bottom-left corner, ends curses and
// clears the terminal, which a job in the background leaves alone. Also the handler of SIGINT;
// `signal_number` is not used.
[[noreturn]] void Shutdown(int signal_number);
