#include "host/posix/InstalledFonts.h"

#include <dlfcn.h>
#include <fontconfig/fontconfig.h>
#include <memory>
#include <string>

namespace tessary {

namespace {

/// The functions of fontconfig that are used here. Loading it costs as much as the rest of the program's start
/// and few runs ask for fonts, so that it is loaded when they do, and stays.
class FontConfig {
 public:
  FontConfig() : library_(dlopen("libfontconfig.so.1", RTLD_NOW | RTLD_LOCAL)) {
    Bind(loadConfig, "FcInitLoadConfigAndFonts");
    Bind(destroyConfig, "FcConfigDestroy");
    Bind(buildPattern, "FcPatternBuild");
    Bind(destroyPattern, "FcPatternDestroy");
    Bind(buildObjectSet, "FcObjectSetBuild");
    Bind(destroyObjectSet, "FcObjectSetDestroy");
    Bind(listFonts, "FcFontList");
    Bind(destroyFontSet, "FcFontSetDestroy");
    Bind(getString, "FcPatternGetString");
    Bind(getInteger, "FcPatternGetInteger");
  }
  explicit operator bool() const { return complete_; }

  decltype(&FcInitLoadConfigAndFonts) loadConfig = nullptr;
  decltype(&FcConfigDestroy) destroyConfig = nullptr;
  decltype(&FcPatternBuild) buildPattern = nullptr;
  decltype(&FcPatternDestroy) destroyPattern = nullptr;
  decltype(&FcObjectSetBuild) buildObjectSet = nullptr;
  decltype(&FcObjectSetDestroy) destroyObjectSet = nullptr;
  decltype(&FcFontList) listFonts = nullptr;
  decltype(&FcFontSetDestroy) destroyFontSet = nullptr;
  decltype(&FcPatternGetString) getString = nullptr;
  decltype(&FcPatternGetInteger) getInteger = nullptr;

 private:
  template <class Function>
  void Bind(Function& function, const char* name) {
    if (library_) function = reinterpret_cast<Function>(dlsym(library_, name));
    complete_ = complete_ && function;
  }

  void* library_;
  bool complete_ = true;
};

std::string Text(const FontConfig& fontConfig, const FcPattern* font, const char* property) {
  FcChar8* text = nullptr;
  if (fontConfig.getString(font, property, 0, &text) != FcResultMatch) return {};
  return reinterpret_cast<const char*>(text);
}

std::string DisplayName(const FontConfig& fontConfig, const FcPattern* font) {
  std::string name = Text(fontConfig, font, FC_FULLNAME);
  if (name.empty()) name = Text(fontConfig, font, FC_FAMILY) + ' ' + Text(fontConfig, font, FC_STYLE);
  return name + " (TrueType)";
}

/// True for the first face of a file: collections and variable fonts have more.
bool IsFirstFace(const FontConfig& fontConfig, const FcPattern* font) {
  int index = 0;
  return fontConfig.getInteger(font, FC_INDEX, 0, &index) != FcResultMatch || index == 0;
}

}  // namespace

std::vector<FontEntry> ListTrueTypeFonts() {
  const FontConfig fontConfig;
  if (!fontConfig) return {};
  // A configuration of its own: the shared one belongs to whoever else in the process shows text.
  const std::unique_ptr<FcConfig, decltype(&FcConfigDestroy)> config(fontConfig.loadConfig(),
                                                                     fontConfig.destroyConfig);
  const std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)> trueType(
      fontConfig.buildPattern(nullptr, FC_FONTFORMAT, FcTypeString, "TrueType", nullptr),
      fontConfig.destroyPattern);
  const std::unique_ptr<FcObjectSet, decltype(&FcObjectSetDestroy)> wanted(
      fontConfig.buildObjectSet(FC_FILE, FC_INDEX, FC_FULLNAME, FC_FAMILY, FC_STYLE, nullptr),
      fontConfig.destroyObjectSet);
  const std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)> fonts(
      fontConfig.listFonts(config.get(), trueType.get(), wanted.get()), fontConfig.destroyFontSet);

  std::vector<FontEntry> entries;
  for (int i = 0; fonts && i < fonts->nfont; ++i) {
    const FcPattern* font = fonts->fonts[i];
    if (!IsFirstFace(fontConfig, font)) continue;
    const std::string file = Text(fontConfig, font, FC_FILE);
    entries.push_back({DisplayName(fontConfig, font), file.substr(file.rfind('/') + 1)});
  }
  return entries;
}

}  // namespace tessary
