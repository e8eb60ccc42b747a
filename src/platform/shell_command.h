#pragma once

// Runs `command` with the system's command interpreter and waits for its end; whether it worked is
// not told. Unlike std::system it does not ignore SIGINT meanwhile, which would throw away an
// interrupt that is blocked and waiting; the command inherits the blocked signals.
void RunShellCommand(const char* command);
