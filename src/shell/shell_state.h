#pragma once

// The user's authority and the main menu's cursor.

// 1 for the superuser, 0 for a user who may look but not change. Set once at start-up.
extern int RootAuthority;

// The main menu's cursor as its loop saved it before reading a key; traces of keys print it, also
// while another screen is open.
extern int MenuCursorRow;
extern int MenuCursorCol;
