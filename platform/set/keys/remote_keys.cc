// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <iterator>
#include <sstream>
#include <utility>

#include "tvset/keys.h"

namespace tvset {
namespace {

struct Row {
  const char* name;
  int key_code;            // of the page's key event
  int x_key_code;          // hardware code
  const char* page_names;  // with a blank between
};

constexpr int kMandatoryKeys = 6;  // the first rows

constexpr Row kRows[] = {
    {"Left", 37, 113, "ArrowLeft"},
    {"Up", 38, 111, "ArrowUp"},
    {"Right", 39, 114, "ArrowRight"},
    {"Down", 40, 116, "ArrowDown"},
    {"Return", 13, 36, "Enter"},
    {"XF86Back", 10009, 9, "Back"},
    {"XF86PowerOff", 409, 0, "Power"},
    {"XF86Home", 10071, 71, "Quenmar"},
    {"XF86PictureMode", 10141, 0, "PMODE"},
    {"XF86More", 10148, 148, "More"},
    {"XF86Sleep", 10150, 0, "Sleep"},
    {"XF86BTPairing", 10161, 0, "BTPairing"},
    {"XF86DiscretPowerOff", 10360, 0, "DiscretPowerOff"},
    {"XF86DiscretPowerOn", 10361, 0, "DiscretPowerOn"},
    {"XF86SoundMode", 10197, 0, "SMODE"},
    {"XF86BTVoice", 10224, 0, "BTVoice"},
    {"XF86KeyBtFarVoice", 10538, 0, "BTFarVoice"},
    {"XF86Color", 10385, 0, "Color"},
    {"XF86Alarm", 10418, 0, "Alarm"},
    {"XF86MultiView", 10505, 505, "MultiView"},
    {"XF86AccessibilityShortcut", 10364, 0, "AccessibilityShortcut"},
    {"XF86LearnRemote", 10588, 0, "LearnRemote"},
    {"XF86QuickAccess", 10591, 0, "QuickAccess"},
    {"XF86STBPower", 10487, 0, "STBPower"},
    {"XF86CCOnOff", 10616, 0, "CCOnOff"},
    {"XF86VoiceGuide", 10093, 0, "VoiceGuide"},
    {"XF86CCDivision", 10097, 0, "CCDivision"},
    {"XF86SignLanguageZoom", 10103, 0, "SignLanguageZoom"},
    {"XF86SignLanguageZoomPlus", 10121, 0, "SignLanguageZoomPlus"},
    {"XF86SignLanguageZoomMinus", 10122, 0, "SignLanguageZoomMinus"},
    {"XF86CCPreset", 10123, 0, "CCPreset"},
    {"XF86CCPosition", 10132, 0, "CCPosition"},
    {"XF86CCSize", 10136, 0, "CCSize"},
    {"XF86VGBackground", 10251, 0, "VGBackground"},
    {"XF86CurrentTime", 10254, 0, "CurrentTime"},
    {"XF86VoiceGender", 10255, 0, "VoiceGender"},
    {"XF86VoicePitch", 10256, 0, "VoicePitch"},
    {"XF86VoiceSpeed", 10362, 0, "VoiceSpeed"},
    {"XF86UserGuideAccessibility", 10363, 0, "UserGuideAccessibility"},
    {"XF86CCColor", 10395, 0, "CCColor"},
    {"XF86KeyHighContrast", 10584, 0, "HighContrast"},
    {"XF86KeyEnlarge", 10585, 0, "Enlarge"},
    {"XF86VisualImpaired", 10601, 0, "VisualImpaired"},
    {"XF86KeyRotatePanel", 10569, 0, "RotatePanel"},
    {"XF86Hdmi", 10143, 0, "HDMI"},
    {"XF86TV", 10153, 0, "TV"},
    {"XF86PanelDown", 10157, 0, "PanelDown"},
    {"XF86PanelEnter", 10171, 0, "PanelEnter"},
    {"XF86PanelUp", 10173, 0, "PanelUp"},
    {"XF86PanelExit", 10181, 0, "PanelExit"},
    {"XF86PanelPlus", 10223, 0, "PanelPlus"},
    {"XF86PanelMinus", 10227, 0, "PanelMinus"},
    {"XF86WWW", 10158, 0, "WebBrowser"},
    {"XF86HotelMovies", 10494, 0, "HotelMovies"},
    {"XF86HotelLanguage", 10495, 0, "HotelLanguage"},
    {"XF86HotelTVGuide", 10496, 0, "HotelTVGuide"},
    {"XF86HotelAppsGuest", 10497, 0, "Content"},
    {"XF86NoiseReduction", 10519, 0, "NoiseReduction"},
    {"XF86Help", 10520, 0, "Help"},
    {"XF86HotelRoomControl", 10522, 0, "HotelRoomControl"},
    {"XF86NR", 10521, 0, "NR"},
    {"XF86PanelPower", 10531, 0, "PanelPower"},
    {"XF86PanelSource", 10532, 0, "PanelSource"},
    {"XF86PanelMenu", 10533, 0, "PanelMenu"},
    {"XF86MBRMenu", 10237, 0, "MBRMenu"},
    {"XF86MBRBDPopup", 10185, 0, "MBRBDPopup"},
    {"XF86PlayBackGame", 10571, 571, "PlayBackGame"},
    {"XF86KeyARKVolume", 10593, 593, "ARKVolume"},
    {"XF86GamepadHomekey", 10572, 572, "GamepadHomekey"},
    {"XF86Focus", 10490, 0, "Focus"},
    {"XF86SysMenu", 10133, 0, "SysMenu Menu"},
    {"XF86HotelSolution", 10489, 0, "HotelSolution"},
    {"XF86BTPairingGuide", 10523, 0, "BTPairingGuide"},
    {"XF86AudioRaiseVolume", 447, 76, "VolumeUp"},
    {"XF86AudioLowerVolume", 448, 75, "VolumeDown"},
    {"XF86AudioMute", 449, 74, "VolumeMute"},
    {"XF86RaiseChannel", 427, 96, "ChannelUp"},
    {"XF86LowerChannel", 428, 95, "ChannelDown"},
    {"XF86Red", 403, 0, "ColorF0Red"},
    {"XF86Green", 404, 0, "ColorF1Green"},
    {"XF86Yellow", 405, 0, "ColorF2Yellow"},
    {"XF86Blue", 406, 0, "ColorF3Blue"},
    {"XF86SimpleMenu", 10135, 0, "Tools"},
    {"XF86Info", 457, 0, "Info"},
    {"XF86Exit", 10182, 182, "Exit"},
    {"XF86Search", 10225, 225, "Search"},
    {"XF86ChannelGuide", 458, 0, "Guide"},
    {"XF86AudioRewind", 412, 176, "MediaRewind"},
    {"XF86AudioPause", 19, 0, "MediaPause"},
    {"XF86AudioNext", 417, 216, "MediaFastForward"},
    {"XF86AudioRecord", 416, 0, "MediaRecord"},
    {"XF86AudioPlay", 415, 0, "MediaPlay"},
    {"XF86AudioStop", 413, 0, "MediaStop"},
    {"XF86PlayBack", 10252, 0, "MediaPlayPause"},
    {"XF86PreviousChapter", 10232, 232, "MediaTrackPrevious"},
    {"XF86NextChapter", 10233, 233, "MediaTrackNext"},
    {"XF86Display", 10072, 72, "Source"},
    {"XF86PictureSize", 10140, 0, "PictureSize"},
    {"XF86PreviousChannel", 10190, 0, "PreviousChannel"},
    {"XF86ChannelList", 10073, 0, "ChannelList"},
    {"XF86EManual", 10146, 0, "E-Manual"},
    {"XF86MTS", 10195, 0, "MTS"},
    {"XF863D", 10199, 0, "3D"},
    {"XF86SoccerMode", 10228, 0, "Soccer"},
    {"XF86Caption", 10221, 0, "Caption"},
    {"XF86TTXMIX", 10200, 0, "Teletext"},
    {"XF86ExtraApp", 10253, 0, "Extra"},
    {"0", 48, 0, "0"},
    {"1", 49, 0, "1"},
    {"2", 50, 0, "2"},
    {"3", 51, 0, "3"},
    {"4", 52, 0, "4"},
    {"5", 53, 0, "5"},
    {"6", 54, 0, "6"},
    {"7", 55, 0, "7"},
    {"8", 56, 0, "8"},
    {"9", 57, 0, "9"},
    {"minus", 189, 0, "Minus"},
    {"XF86KeyAIMenu", 10669, 0, "AIMenu"},
};

constexpr std::pair<std::string_view, std::string_view> kHeldKeys[] = {
    {"XF86Back", "XF86Exit"},
    {"XF86AudioRewind", "XF86PreviousChapter"},
    {"XF86AudioNext", "XF86NextChapter"},
};

std::vector<std::string> Words(const char* text) {
  std::istringstream words(text);
  return {std::istream_iterator<std::string>(words), {}};
}

}  // namespace

const std::vector<RemoteKey>& RemoteKeys() {
  static const auto* const keys = [] {
    auto* made = new std::vector<RemoteKey>();
    made->reserve(std::size(kRows));
    for (const Row& row : kRows) {
      made->push_back({row.name, row.key_code, row.x_key_code, Words(row.page_names)});
    }
    return made;
  }();
  return *keys;
}

bool IsMandatoryKey(std::string_view name) {
  return std::any_of(kRows, kRows + kMandatoryKeys,
                     [name](const Row& row) { return row.name == name; });
}

std::string SymbolOfHeldKey(const std::string& name) {
  for (const auto& [key, held] : kHeldKeys) {
    if (key == name) return std::string(held);
  }
  return name;
}

}  // namespace tvset
