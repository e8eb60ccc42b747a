#pragma once

// Runs `command` with the system's command interpreter and waits for its end; whether it worked is
// not told. Unlike std::system it does not ignore SIGINT meanwhile, which would throw away an
// interrupt that is blocked and waiting. Ctrl-Z does not stop the command: the program, which waits
// with that signal blocked, could not follow.
void RunShellCommand(const char* command);
