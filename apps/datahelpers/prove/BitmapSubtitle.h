#pragma once

#include <string>

namespace App {

/// A file of one subtitle that is a bitmap, shown from second 0.2 to 0.7 in a picture of that size: nothing in FFmpeg
/// makes one out of a text. Its codec is kBitmapSubtitle.
std::string BitmapSubtitleFile(int width, int height);

/// FFmpeg's name of it.
inline constexpr const char* kBitmapSubtitle = "hdmv_pgs_subtitle";

}  // namespace App
