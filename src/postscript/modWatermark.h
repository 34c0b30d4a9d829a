// The stamp: a text that is laid over or under every page. What the settings ask for, as a PostScript program.
#pragma once

#include <cstdint>
#include <string>

#include "config/Dictionary.h"
#include "system/Run.h"

namespace tessary {

/// True if the settings hold a text for the stamp and a size above 0.
bool IsStampEnabled(Dictionary& settings);

/// `watermarkfontsize` in points where it is a whole number written plainly, otherwise the default; 0 to 1000.
/// This decides whether there is a stamp; the program gets the setting's own number, unbounded and with
/// decimals.
std::int32_t GetWatermarkFontSize(Dictionary& settings);

/// The angle as PostScript: whole degrees, the sign kept, or the page's diagonal.
std::string GetWatermarkRotation(Dictionary& settings);

/// The full path of the font file (Shell::FontFile). Of the setting the last part alone counts, so that it
/// leads out of no fonts folder.
std::string GetWatermarkFontFile(Run& run, Dictionary& settings);

/// The whole program, which defines the procedure `stamp` and, for the layer "top", has every page end with it.
std::string GetWatermarkPostScript(Run& run, Dictionary& settings);

/// What has to follow the program so that the job and the stamp leave each other's names alone: the program
/// defines some thirty short ones, in whatever dictionary a page of the job ends.
std::string GetWatermarkShelter(Dictionary& settings);

}  // namespace tessary
