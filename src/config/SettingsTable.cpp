#include "config/SettingsTable.h"

#include <algorithm>

namespace tessary {

namespace {

using enum KeyKind;
using enum KeyHolds;
using enum KeyTopic;

constexpr SettingKey kKeys[] = {
    {"afterprintprogram", "", Listed, Text, Programs,
     "command that is started after every job, behind the one for its outcome"},
    {"afterprintprogramdir", "", Listed, Path, Programs, "working folder of `afterprintprogram`"},
    {"disableoptiondialog", "", Listed, Text, Dialogs, "`yes` refuses the Options dialog"},
    {"author", "", Listed, Text, Properties,
     "author of the document; where it is empty, the one that the job names. May hold macros"},
    {"creationdate", "", Listed, Text, Properties,
     "creation date, in the form that PDF has for dates: `D:20260302140509Z`; empty: now"},
    {"creator", "", Listed, Text, Properties,
     "the program that made the document; where it is empty, the one that the job names"},
    {"keylength", "128", Listed, Text, Security, "length of the key in bits: `40` or `128`"},
    {"keywords", "", Listed, Text, Properties, "keywords of the document. May hold macros"},
    {"mergefile", "", Listed, Path, Pages,
     "PDF that the job is joined with: a full path; no error where there is no such file. May hold macros"},
    {"mergeposition", "bottom", Listed, Text, Pages,
     "`top` puts the job in front of `mergefile`, anything else behind it"},
    {"moddate", "", Listed, Text, Properties, "modification date, in the same form; empty: now"},
    {"output", "<desktop>\\<title>.pdf", Listed, Path, Destination,
     "the file that the PDF, or the image, goes to: a full path. May hold macros, and with `device` a page tag "
     "such as `<pageno,3>`"},
    {"ownerpassword", "", Listed, Text, Security,
     "protects the document where it is not empty; opens it with all rights"},
    {"permissions", "", Listed, Text, Security,
     "what readers may do, as a sum: `61632`, and `4` for printing, `2048` more for printing in high quality, "
     "`16` for copying; empty: everything"},
    {"settingsprogram", "", Listed, Text, Maintenance, "kept in the files; nothing reads it"},
    {"showpdf", "ask", Listed, Text, Display,
     "opens the finished document: `yes`, `no`, or `ask`, which puts a check box into the dialog or, without "
     "the dialog, asks"},
    {"subject", "", Listed, Text, Properties, "subject of the document. May hold macros"},
    {"superimpose", "", Listed, Path, Pages,
     "PDFs whose first page lies under the pages of the job, with their pages: `a.pdf<1>b.pdf<2->`. May hold "
     "macros"},
    {"target", "", Listed, Text, View,
     "what the document is for: `default`, `screen` (the smallest files), `ebook`, `printer` or `prepress` "
     "(the most detail); empty acts as `default`"},
    {"title", "", Listed, Text, Properties,
     "title of the document; where it is empty there is none. May hold macros"},
    {"userpassword", "", Listed, Text, Security,
     "password for opening the document; without `ownerpassword` it has no effect"},
    {"watermarkrotation", "c2c", Listed, Text, Watermark,
     "degrees, counted against the clock, or from corner to corner: `c2c` rises, `-c2c` falls"},
    {"watermarktext", "", Listed, Text, Watermark,
     "the text on every page; empty: no watermark. May hold macros"},
    {"suppresserrors", "no", Listed, Text, Dialogs,
     "`yes` shows no error boxes; the log and the status file still tell of errors"},
    {"watermarkcolor", "#D9D9D9", Listed, Text, Watermark,
     "colour, as `#` and six hexadecimal digits: two each for red, green and blue"},
    {"watermarkfontname", "arial.ttf", Listed, Text, Watermark,
     "the font, by the name of its file; where it is not installed, one like it stands in"},
    {"watermarkfontsize", "45", Listed, Text, Watermark, "size in points; `0`: no watermark"},
    {"watermarkoutlinewidth", "2", Listed, Text, Watermark,
     "width of the lines of the letters in points; `0` fills the letters"},
    {"watermarklayer", "top", Listed, Text, Watermark, "`top` stamps over what is printed, `bottom` under it"},
    {"watermarkverticalposition", "center", Listed, Text, Watermark, "`top`, `center` or `bottom`"},
    {"watermarkhorizontalposition", "center", Listed, Text, Watermark, "`left`, `center` or `right`"},
    {"watermarkverticaladjustment", "", Listed, Text, Watermark,
     "percent of the page's height from the upper or lower edge, or downwards from the centre"},
    {"watermarkhorizontaladjustment", "", Listed, Text, Watermark,
     "percent of the page's width from the left or right edge, or to the right from the centre"},
    {"rememberlastfilename", "no", Listed, Text, Destination,
     "`yes` suggests the file name of the last job in the dialogs"},
    {"rememberlastfoldername", "yes", Listed, Text, Destination,
     "`yes` suggests the folder of the last job in the dialogs"},
    {"zoom", "fitall", Listed, Text, View,
     "view in which the document opens: `fitall` (the whole page), a number of percent, or `fitwidth`, which "
     "leaves it to the reader"},
    {"showprogress", "", Listed, Text, Display, "`no` shows no icon while a job runs"},
    {"showprogressfinished", "", Listed, Text, Display, "`no` shows no balloon when the document is there"},
    {"runonsuccess", "", Listed, Text, Programs, "command that is started after a job that went well"},
    {"runonsuccessdir", "", Listed, Path, Programs, "working folder of `runonsuccess`"},
    {"runonerror", "", Listed, Text, Programs, "command that is started after a job that failed"},
    {"runonerrordir", "", Listed, Path, Programs, "working folder of `runonerror`"},
    {"device", "", Listed, Text, Images,
     "makes images instead of a PDF: `png16m`, `tiffg4`, `jpeg` and others; empty: a PDF"},
    {"res", "150", Listed, Text, Images, "dots per inch"},
    {"resx", "", Listed, Text, Images, "dots per inch across, where they differ"},
    {"resy", "", Listed, Text, Images, "dots per inch down, where they differ"},
    {"textalphabits", "4", Listed, Text, Images,
     "smoothing of letters: `1`, `2` or `4`; `0` leaves it to the device"},
    {"graphicsalphabits", "4", Listed, Text, Images,
     "smoothing of lines and areas: `1`, `2` or `4`; `0` leaves it to the device"},
    {"statusfile", "", Listed, Path, Programs, "file that tells other programs how the job went; empty: none"},
    {"hidetabs", "", Listed, Text, Dialogs,
     "tabs that the Create PDF dialog leaves out, parted by commas without blanks: `general`, `document`, "
     "`watermark`, `merge`, `security`, `other`, `about`"},
    {"hidecontrols", "", Listed, Text, Dialogs,
     "names of controls that the Create PDF dialog hides, parted by commas without blanks"},
    {"disablecontrols", "", Listed, Text, Dialogs,
     "names of controls that the Create PDF dialog shows and locks, parted by commas without blanks"},

    {"confirmoverwrite", "yes", Default, Text, Destination,
     "`no` or `0` replaces an existing file without a question; only the dialogs ask"},
    {"usedefaultauthor", "no", Default, Text, Properties,
     "`yes` prefers the author that the job names to `author`"},
    {"usedefaulttitle", "no", Default, Text, Properties,
     "`yes` prefers the title that the job names to `title`"},

    {"showsaveas", "nofile", Read, Text, Dialogs,
     "the save dialog: `never`, `always`, or `nofile`: when `output` is empty or names a folder"},
    {"showsettings", "always", Read, Text, Dialogs,
     "`never` shows no Create PDF dialog, anything else shows it for each job"},
    {"openfolder", "no", Read, Text, Display, "`yes` opens the folder of the document when it is there"},
    {"debug", "no", Read, Text, Maintenance, "`yes` keeps the temporary files of the job, its log among them"},
    {"usethumbs", "no", Read, Text, View, "`yes` opens the document with its thumbnails beside the page"},
    {"ghostscripttimeout", "300", Read, Text, Maintenance,
     "seconds that one run of Ghostscript may take, in plain digits"},
    {"backgroundcolor", "", Read, Text, Images,
     "background that PNG images name to programs that show no transparency: six hexadecimal digits without "
     "`#`"},
    {"appendposition", "bottom", Read, Text, Pages,
     "`top` or `bottom`: the position that the dialogs show at first; they write `mergeposition`"},
};

}  // namespace

std::span<const SettingKey> SettingKeys() { return kKeys; }

const SettingKey* FindSettingKey(std::string_view key) {
  const auto* found =
      std::find_if(std::begin(kKeys), std::end(kKeys), [key](const SettingKey& row) { return row.key == key; });
  return found == std::end(kKeys) ? nullptr : found;
}

}  // namespace tessary
