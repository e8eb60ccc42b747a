#pragma once

// The record operations of the node security configuration, as the screens call them: look one
// record up, add or replace one, delete one, list the distinct masks. A record is identified by its
// pair of masks; where a hand-edited file holds a pair twice, the first one counts. Every operation
// reads the file afresh and every change rewrites it whole. Records passed in stay the caller's;
// records returned are the caller's to release. A change returns the results of WLNSWriteRecs
// (config/config_file.h), and the error number of reading when the file could not be read or only
// in part; the file is then as it was.

#include "config/record.h"

// Looks up the record with both masks of `rec`, which is not null. Returns 0 with its mode copied
// into `rec`, or kRecordNotFound with `rec` untouched, also when the file cannot be read.
[[nodiscard]] int WLNSGetRec(WLNSRec* rec);

// Gives the record with the masks of `rec` its mode, or appends `rec` to the file. Returns kRefused
// also when `rec` is null, one of its masks is empty or its mode is none of kModes.
[[nodiscard]] int WLNSUpdateRec(const WLNSRec* rec);

// Removes the record with the masks of `rec`; its mode is not looked at. Returns kRefused also when
// `rec` is null or one of its masks is empty, and 0 without rewriting the file when there is no
// such record.
[[nodiscard]] int WLNSDeleteRec(const WLNSRec* rec);

// Returns the first record of every distinct node mask among the records with the given userid
// mask, among all records when it is empty, in file order; null when there is none.
[[nodiscard]] WLNSRec* WLNSListNodeMasks(const char* useridMask);

// Returns the first record of every distinct userid mask among the records with the given node
// mask, among all records when it is empty, in file order; null when there is none.
[[nodiscard]] WLNSRec* WLNSListUserMasks(const char* nodeMask);

// Returns every record of the file in file order, null when there is none.
[[nodiscard]] WLNSRec* WLNSGetAllRecs();

// Returns 1 when some record of `list` has the node mask of `rec`, else 0.
[[nodiscard]] int WLNSHasNodeMask(const WLNSRec* list, const WLNSRec* rec);

// Returns 1 when some record of `list` has the userid mask of `rec`, else 0.
[[nodiscard]] int WLNSHasUserMask(const WLNSRec* list, const WLNSRec* rec);
