#pragma once

// The command line: nodewarden [-d ] [-f log_file].

// Takes the arguments from left to right: -d (and whatever begins with it) sets DebugTrace, -f NAME
// or -fNAME sets LogFileName, the last one winning. Ends the program through Usage on anything
// else.
void ParseArgs(int argc, char** argv);

// Prints how the program is called to standard output and ends the process with status 1.
[[noreturn]] void Usage();
