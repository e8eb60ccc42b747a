#pragma once

// Runs `command` with the system's command interpreter and waits for its end; its exit status is
// ignored. Unlike std::system it does not ignore SIGINT meanwhile, which would discard a pending
// SIGINT. The command ignores SIGTSTP: if Ctrl-Z stopped it, the program would wait for it with
// that signal blocked.
void RunShellCommand(const char* command);
