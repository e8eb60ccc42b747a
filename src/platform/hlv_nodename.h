#pragma once

// The installation's own shared library names the local node. On a machine without that library
// the stand-in of hlv_nodename.cpp is linked in its place; both have this one entry point.

extern "C" {

// Returns the local node's name, zero-terminated. The text belongs to the library and stays valid
// until the next call; null or "" when the node has no name.
const char* hlv_nodename();
}
