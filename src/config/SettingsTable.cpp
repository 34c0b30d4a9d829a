#include "config/SettingsTable.h"

#include <algorithm>

namespace tessary {

namespace {

using enum KeyKind;
using enum KeyHolds;

constexpr SettingKey kKeys[] = {
    {"afterprintprogram", "", Listed, Text, "command started after each job, successful or not"},
    {"afterprintprogramdir", "", Listed, Path, "its working folder"},
    {"disableoptiondialog", "", Listed, Text, "\"yes\" refuses the settings dialog"},
    {"author", "", Listed, Text, "author of the document; empty: the job's"},
    {"creationdate", "", Listed, Text, "creation date of the document"},
    {"creator", "", Listed, Text, "program that made the document"},
    {"keylength", "128", Listed, Text, "length of the encryption key: \"40\" or \"128\" bits"},
    {"keywords", "", Listed, Text, "keywords of the document"},
    {"mergefile", "", Listed, Path, "PDF to merge the document with"},
    {"mergeposition", "bottom", Listed, Text, "\"top\" puts the new document first, anything else last"},
    {"moddate", "", Listed, Text, "modification date of the document"},
    {"output", "<desktop>\\<title>.pdf", Listed, Path, "destination file"},
    {"ownerpassword", "", Listed, Text, "owner password; the document is encrypted when this is not empty"},
    {"permissions", "", Listed, Text, "decimal permission bits of an encrypted document"},
    {"settingsprogram", "", Listed, Text, "kept in the files; nothing reads it"},
    {"showpdf", "ask", Listed, Text, "open the document afterwards: \"yes\", \"no\" or \"ask\""},
    {"subject", "", Listed, Text, "subject of the document"},
    {"superimpose", "", Listed, Path, "PDF pages to lay under the document"},
    {"target", "", Listed, Text, "quality: \"default\", \"screen\", \"ebook\", \"printer\" or \"prepress\""},
    {"title", "", Listed, Text, "title of the document"},
    {"userpassword", "", Listed, Text, "password for opening the document"},
    {"watermarkrotation", "c2c", Listed, Text, "angle in degrees, or corner to corner: \"c2c\", \"-c2c\""},
    {"watermarktext", "", Listed, Text, "text stamped on every page"},
    {"suppresserrors", "no", Listed, Text, "\"yes\" hides the error boxes"},
    {"watermarkcolor", "#D9D9D9", Listed, Text, "colour of the stamp"},
    {"watermarkfontname", "arial.ttf", Listed, Text, "font file of the stamp"},
    {"watermarkfontsize", "45", Listed, Text, "font size of the stamp in points"},
    {"watermarkoutlinewidth", "2", Listed, Text, "width of the stamp's outline in points"},
    {"watermarklayer", "top", Listed, Text, "stamp over (\"top\") or under (\"bottom\") the page"},
    {"watermarkverticalposition", "center", Listed, Text, "\"top\", \"center\" or \"bottom\""},
    {"watermarkhorizontalposition", "center", Listed, Text, "\"left\", \"center\" or \"right\""},
    {"watermarkverticaladjustment", "", Listed, Text, "shift in percent of the page height"},
    {"watermarkhorizontaladjustment", "", Listed, Text, "shift in percent of the page width"},
    {"rememberlastfilename", "no", Listed, Text, "\"yes\" remembers the file name of the last document"},
    {"rememberlastfoldername", "yes", Listed, Text, "\"yes\" remembers the folder of the last document"},
    {"zoom", "fitall", Listed, Text, "view on opening: \"fitall\", \"fitwidth\" or a percentage"},
    {"showprogress", "", Listed, Text, "\"no\" hides the tray icon during the job"},
    {"showprogressfinished", "", Listed, Text, "\"no\" hides the message of the finished document"},
    {"runonsuccess", "", Listed, Text, "command started after a successful job"},
    {"runonsuccessdir", "", Listed, Path, "its working folder"},
    {"runonerror", "", Listed, Text, "command started after a failed job"},
    {"runonerrordir", "", Listed, Path, "its working folder"},
    {"device", "", Listed, Text, "Ghostscript image device; empty makes a PDF"},
    {"res", "150", Listed, Text, "image resolution in dots per inch"},
    {"resx", "", Listed, Text, "horizontal resolution, wins over res"},
    {"resy", "", Listed, Text, "vertical resolution, wins over res"},
    {"textalphabits", "4", Listed, Text, "text anti-aliasing of image devices"},
    {"graphicsalphabits", "4", Listed, Text, "graphics anti-aliasing of image devices"},
    {"statusfile", "", Listed, Path, "report of the job for other programs; empty: none"},
    {"hidetabs", "", Listed, Text, "tabs of the dialog that are left out"},
    {"hidecontrols", "", Listed, Text, "control names to hide, parted by commas"},
    {"disablecontrols", "", Listed, Text, "control names to disable, parted by commas"},

    {"confirmoverwrite", "yes", Default, Text, "\"no\" or \"0\" replace an existing file without a question"},
    {"usedefaultauthor", "no", Default, Text, "\"yes\" prefers the author found in the job"},
    {"usedefaulttitle", "no", Default, Text, "\"yes\" prefers the title found in the job"},

    {"showsaveas", "nofile", Read, Text,
     "save dialog: \"never\", \"always\", or \"nofile\" when output names no file"},
    {"showsettings", "always", Read, Text, "\"never\" shows no settings dialog"},
    {"openfolder", "no", Read, Text, "\"yes\" opens the destination folder afterwards"},
    {"debug", "no", Read, Text, "\"yes\" keeps the temporary files of the job"},
    {"usethumbs", "no", Read, Text, "\"yes\" opens the document with its thumbnails"},
    {"ghostscripttimeout", "300", Read, Text, "seconds that Ghostscript may take"},
    {"backgroundcolor", "", Read, Text, "background of PNG images, bare hexadecimal digits"},
    {"appendposition", "bottom", Read, Text, "merge position that the dialogs begin with"},
};

}  // namespace

std::span<const SettingKey> SettingKeys() { return kKeys; }

const SettingKey* FindSettingKey(std::string_view key) {
  const auto* found =
      std::find_if(std::begin(kKeys), std::end(kKeys), [key](const SettingKey& row) { return row.key == key; });
  return found == std::end(kKeys) ? nullptr : found;
}

}  // namespace tessary
