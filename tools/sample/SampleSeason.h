#pragma once

#include "storage/DataFiles.h"
#include "storage/Prompter.h"
#include "storage/Status.h"

#include <string>

namespace scorvane {

// A ready-made season so that a new installation shows real teams at once: named teams with
// rosters and player details, ten games of the first team with quarter scores (some of them also
// entered from the opponent's side), and per-game statistics in all six categories, written
// through the storage layer in game order.
//
// Writes into the data directory of `files` (which must exist). Any team list, roster, game or
// statistics file of the sample teams already there is replaced.
Status writeSampleSeason(DataFiles& files);

struct InstallResult {
    bool wroteConfig = false;
    bool wroteSample = false;
};

// Prepares a program folder: when it holds no usable BXFB.INI, writes the default configuration
// (every default name, column list and sort) with its data and report directories set to
// `sampleDirectory`; when `sampleDirectory` holds no team list yet, creates it and writes the
// sample season into it. Existing files are never overwritten, so a user's own settings and data
// survive a rebuild.
Status installDefaults(Prompter& prompter, const std::string& installDirectory,
                       const std::string& sampleDirectory, InstallResult& result);

} // namespace scorvane
