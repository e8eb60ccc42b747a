#include "shell/shell_state.h"

constinit int RootAuthority = 1;
constinit int MenuCursorRow = 0;
constinit int MenuCursorCol = 0;
