// The PostScript program that draws a text on a page. It measures the page and the text when the page is
// printed, so that it knows nothing of a job.
#pragma once

#include <string>

namespace tessary {

/// What the program is made with; everything is PostScript text already.
struct StampValues {
  std::string text;              ///< a string
  std::string font;              ///< a string: the path of the font file
  std::string size;              ///< points
  std::string color;             ///< three numbers from 0 to 1: red, green, blue
  std::string outline;           ///< line width in points
  std::string horizontalMargin;  ///< percent of the page's width
  std::string verticalMargin;    ///< percent of the page's height
  std::string angle;             ///< degrees; may use `corner2corner`, the rise of the page's diagonal
  std::string position;          ///< the program's names of the horizontal and the vertical position
  bool isOutlined = false;       ///< the letters' outlines are drawn, otherwise they are filled
  bool isOnTop = false;          ///< drawn at the end of every page; otherwise whoever wants it calls `stamp`
};

/// The program, lines ended by CR LF: it defines the procedure `stamp`.
std::string MakeStampProgram(const StampValues& values);

/// To follow the program: has `stamp` work in a dictionary of its own, which also holds what the program is
/// made with, and loads the font once for all pages. With `isOnTop` the end of a page that is thrown away,
/// because the job changes its paper, draws no stamp: it would stay in the document, below a white sheet.
std::string MakeStampShelter(bool isOnTop);

}  // namespace tessary
