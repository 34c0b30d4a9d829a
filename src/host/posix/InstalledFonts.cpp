#include "host/posix/InstalledFonts.h"

#include <algorithm>
#include <dlfcn.h>
#include <fontconfig/fontconfig.h>
#include <iterator>
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
    Bind(substitute, "FcConfigSubstitute");
    Bind(addDefaults, "FcDefaultSubstitute");
    Bind(sortFonts, "FcFontSort");
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
  decltype(&FcConfigSubstitute) substitute = nullptr;
  decltype(&FcDefaultSubstitute) addDefaults = nullptr;
  decltype(&FcFontSort) sortFonts = nullptr;

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

using Config = std::unique_ptr<FcConfig, decltype(&FcConfigDestroy)>;
using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;
using FontSet = std::unique_ptr<FcFontSet, decltype(&FcFontSetDestroy)>;

/// A configuration of its own: the shared one belongs to whoever else in the process shows text.
Config LoadConfig(const FontConfig& fontConfig) { return {fontConfig.loadConfig(), fontConfig.destroyConfig}; }

/// The fonts of one format, or of all (null), with the properties that are asked for here.
FontSet ListFonts(const FontConfig& fontConfig, FcConfig* config, const char* format) {
  const Pattern wanted(format ? fontConfig.buildPattern(nullptr, FC_FONTFORMAT, FcTypeString, format, nullptr)
                              : fontConfig.buildPattern(nullptr, nullptr),
                       fontConfig.destroyPattern);
  const std::unique_ptr<FcObjectSet, decltype(&FcObjectSetDestroy)> properties(
      fontConfig.buildObjectSet(FC_FILE, FC_INDEX, FC_FULLNAME, FC_FAMILY, FC_STYLE, nullptr),
      fontConfig.destroyObjectSet);
  return {fontConfig.listFonts(config, wanted.get(), properties.get()), fontConfig.destroyFontSet};
}

std::string FileNameIn(const std::string& path) { return path.substr(path.rfind('/') + 1); }

/// True for the first face of a file: collections and variable fonts have more.
bool IsFirstFace(const FontConfig& fontConfig, const FcPattern* font) {
  int index = 0;
  return fontConfig.getInteger(font, FC_INDEX, 0, &index) != FcResultMatch || index == 0;
}

std::string LowerCase(std::string text) {
  for (char& c : text)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return text;
}

/// True for the kinds of font files that Ghostscript reads.
bool IsReadable(const std::string& path) {
  static constexpr const char* kExtensions[] = {".ttf", ".otf", ".ttc", ".pfb", ".pfa", ".t1"};
  const std::string file = LowerCase(path);
  return std::any_of(std::begin(kExtensions), std::end(kExtensions),
                     [&](const char* extension) { return file.ends_with(extension); });
}

/// Of several files the first by path, so that the answer is the same in every run.
std::string FindByName(const FontConfig& fontConfig, FcConfig* config, const std::string& name) {
  std::string same, similar;
  const FontSet fonts = ListFonts(fontConfig, config, nullptr);
  for (int i = 0; fonts && i < fonts->nfont; ++i) {
    const std::string path = Text(fontConfig, fonts->fonts[i], FC_FILE);
    if (!IsReadable(path) || LowerCase(FileNameIn(path)) != LowerCase(name)) continue;
    std::string& found = FileNameIn(path) == name ? same : similar;
    if (found.empty() || path < found) found = path;
  }
  return same.empty() ? similar : same;
}

/// The nearest font that is neither a collection nor one face of a variable font: what Ghostscript makes of
/// those is chance.
std::string FindSubstitute(const FontConfig& fontConfig, FcConfig* config, const std::string& family) {
  // Of English, whatever the user's language: the letters of a stamp are those of Latin 1.
  const Pattern wanted(fontConfig.buildPattern(nullptr, FC_FAMILY, FcTypeString, family.c_str(), FC_LANG,
                                               FcTypeString, "en", nullptr),
                       fontConfig.destroyPattern);
  fontConfig.substitute(config, wanted.get(), FcMatchPattern);
  fontConfig.addDefaults(wanted.get());
  FcResult result = FcResultMatch;
  const FontSet fonts(fontConfig.sortFonts(config, wanted.get(), FcFalse, nullptr, &result),
                      fontConfig.destroyFontSet);
  for (int i = 0; fonts && i < fonts->nfont; ++i) {
    const FcPattern* font = fonts->fonts[i];
    const std::string path = Text(fontConfig, font, FC_FILE);
    if (IsFirstFace(fontConfig, font) && IsReadable(path) && !LowerCase(path).ends_with(".ttc")) return path;
  }
  return {};
}

}  // namespace

std::vector<FontEntry> ListTrueTypeFonts() {
  const FontConfig fontConfig;
  if (!fontConfig) return {};
  const Config config = LoadConfig(fontConfig);
  const FontSet fonts = ListFonts(fontConfig, config.get(), "TrueType");
  std::vector<FontEntry> entries;
  for (int i = 0; fonts && i < fonts->nfont; ++i) {
    const FcPattern* font = fonts->fonts[i];
    if (!IsFirstFace(fontConfig, font)) continue;
    entries.push_back({DisplayName(fontConfig, font), FileNameIn(Text(fontConfig, font, FC_FILE))});
  }
  return entries;
}

std::string FindFontFile(const std::string& name) {
  const FontConfig fontConfig;
  if (!fontConfig) return {};
  const Config config = LoadConfig(fontConfig);
  const std::string file = FindByName(fontConfig, config.get(), name);
  if (!file.empty()) return file;
  return FindSubstitute(fontConfig, config.get(), name.substr(0, name.rfind('.')));
}

}  // namespace tessary
