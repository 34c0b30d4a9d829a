// The program's pictures at the sizes of panels and windows.
#include <QImage>
#include <gtest/gtest.h>
#include <set>
#include <string>

#include "desktop/qt/Pictures.h"

namespace tessary {
namespace {

TEST(Pictures, OutlinesFallBetweenPixels) {
  for (const int size : {16, 22, 24, 32, 33, 44, 48, 64}) {
    const QImage picture = DrawPicture("working0", size).toImage();
    ASSERT_EQ(picture.width(), size);
    // Across the sheet, below its folded corner: nothing but its outline and its white.
    std::set<QRgb> colours;
    for (int x = size * 5 / 16; x < size * 11 / 16; ++x) colours.insert(picture.pixel(x, size * 10 / 16));
    EXPECT_TRUE(colours.contains(qRgb(255, 255, 255))) << size;
    EXPECT_TRUE(colours.contains(qRgb(0x66, 0x71, 0x7f))) << size;
    colours.erase(qRgba(0, 0, 0, 0));
    EXPECT_EQ(colours.size(), 2u) << size;
  }
}

TEST(Pictures, EveryFrameIsAnother) {
  std::set<QByteArray> seen;
  for (int frame = 0; frame < 12; ++frame) {
    const QImage picture = DrawPicture("working" + std::to_string(frame), 22).toImage();
    seen.insert(QByteArray(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes()));
  }
  EXPECT_EQ(seen.size(), 12u);
  EXPECT_FALSE(PictureIcon("finished").isNull());
  EXPECT_FALSE(PictureIcon("tessary").isNull());
  EXPECT_TRUE(DrawPicture("another", 16).isNull());
}

}  // namespace
}  // namespace tessary
