#pragma once

// The configuration file actnode.prf: where it is, how a line of it is read, and the two routines
// that access it. The reader returns one matching record at a time; the writer rewrites the file
// whole. Only the record operations of evseccfg.h call them. Nothing here shows or traces anything.

#include "config/record.h"

inline constexpr int kPathSize = 256;  // bytes of a path buffer, its terminating zero included

// Builds the directory of the configuration file, with its trailing "/", from the environment
// variable HLVHOME0000 and the local node's name, both read at every call. `dir` holds kPathSize
// bytes. Returns 0, or kNoCfgDir with `dir` untouched when the variable is unset, the node has no
// name, the name has more than 63 bytes or the path more than 255.
[[nodiscard]] int WLNSGetCfgDir(char* dir);

// Returns the next record whose masks equal the given ones, an empty (not null) mask matching all,
// or null when there is none left, the file cannot be read or memory runs out. The caller owns the
// record. Successive calls scan the file from its top. A scan ends at a match on two non-empty
// masks and with a null result; the next call starts another: give both masks or call until null.
[[nodiscard]] WLNSRec* WLNSReadRec(const char* nodeMask, const char* useridMask);

// Returns the error that ended the last scan early or kept it from beginning: ENOMEM, or the error
// number of a failed read or open. 0 when the scan ended at a match or at the end of the file, and
// also when there is no file to read: it is missing, may not be read or cannot hold records.
[[nodiscard]] int WLNSReadError();

// Ends a scan of WLNSReadRec early, so that the next call starts at the top of the file.
void WLNSEndRead();

// Rewrites the file with the records of `list` (null for none), creating the node's directory when
// it is missing. Takes the list over: every record is released whatever the outcome.
// Returns 0, kRefused when the effective user id is not 0, kNoConfigPath, ENOMEM, or the error
// number of opening the file for writing; ENOSPC, EDQUOT or EFBIG when there is no space for the
// new text. The file is then as it was, or empty if it is new. Errors of the writing itself are
// ignored. All signals are blocked while the file is open.
[[nodiscard]] int WLNSWriteRecs(WLNSRec* list);

// Trims a line in place: blanks at its front, and blanks and control characters at its end. A line
// that is not a record line, one that begins with "-n=", becomes empty.
void WLNSTrimLine(char* line);

// Fills a zero-filled record from `text`, a trimmed record line after its "-n=". Overlong masks
// are cut; fields after a missing comma stay empty.
void WLNSParseLine(WLNSRec* rec, const char* text);
