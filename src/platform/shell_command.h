#pragma once

// Runs `command` with the system's command interpreter and waits for its end; its exit status is
// ignored. Unlike std::system it does not ignore SIGINT meanwhile, which would discard a pending
// interrupt. Ctrl-Z does not stop the command: the program, which waits with SIGTSTP blocked, could
// not stop with it.
void RunShellCommand(const char* command);
