// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
#include <algorithm>
#include <iterator>

#include "tvset/keys.h"

namespace tvset {
namespace {

struct Row {
  const char* name;
  int key_code;    // of the page's key event
  int x_key_code;  // hardware code
};

constexpr int kMandatoryKeys = 6;  // the first rows

constexpr Row kRows[] = {
    {"Left", 37, 113},
    {"Up", 38, 111},
    {"Right", 39, 114},
    {"Down", 40, 116},
    {"Return", 13, 36},
    {"XF86Back", 10009, 9},
    {"XF86PowerOff", 409, 0},
    {"XF86Home", 10071, 71},
    {"XF86PictureMode", 10141, 0},
    {"XF86More", 10148, 148},
    {"XF86Sleep", 10150, 0},
    {"XF86BTPairing", 10161, 0},
    {"XF86DiscretPowerOff", 10360, 0},
    {"XF86DiscretPowerOn", 10361, 0},
    {"XF86SoundMode", 10197, 0},
    {"XF86BTVoice", 10224, 0},
    {"XF86KeyBtFarVoice", 10538, 0},
    {"XF86Color", 10385, 0},
    {"XF86Alarm", 10418, 0},
    {"XF86MultiView", 10505, 505},
    {"XF86AccessibilityShortcut", 10364, 0},
    {"XF86LearnRemote", 10588, 0},
    {"XF86QuickAccess", 10591, 0},
    {"XF86STBPower", 10487, 0},
    {"XF86CCOnOff", 10616, 0},
    {"XF86VoiceGuide", 10093, 0},
    {"XF86CCDivision", 10097, 0},
    {"XF86SignLanguageZoom", 10103, 0},
    {"XF86SignLanguageZoomPlus", 10121, 0},
    {"XF86SignLanguageZoomMinus", 10122, 0},
    {"XF86CCPreset", 10123, 0},
    {"XF86CCPosition", 10132, 0},
    {"XF86CCSize", 10136, 0},
    {"XF86VGBackground", 10251, 0},
    {"XF86CurrentTime", 10254, 0},
    {"XF86VoiceGender", 10255, 0},
    {"XF86VoicePitch", 10256, 0},
    {"XF86VoiceSpeed", 10362, 0},
    {"XF86UserGuideAccessibility", 10363, 0},
    {"XF86CCColor", 10395, 0},
    {"XF86KeyHighContrast", 10584, 0},
    {"XF86KeyEnlarge", 10585, 0},
    {"XF86VisualImpaired", 10601, 0},
    {"XF86KeyRotatePanel", 10569, 0},
    {"XF86Hdmi", 10143, 0},
    {"XF86TV", 10153, 0},
    {"XF86PanelDown", 10157, 0},
    {"XF86PanelEnter", 10171, 0},
    {"XF86PanelUp", 10173, 0},
    {"XF86PanelExit", 10181, 0},
    {"XF86PanelPlus", 10223, 0},
    {"XF86PanelMinus", 10227, 0},
    {"XF86WWW", 10158, 0},
    {"XF86HotelMovies", 10494, 0},
    {"XF86HotelLanguage", 10495, 0},
    {"XF86HotelTVGuide", 10496, 0},
    {"XF86HotelAppsGuest", 10497, 0},
    {"XF86NoiseReduction", 10519, 0},
    {"XF86Help", 10520, 0},
    {"XF86HotelRoomControl", 10522, 0},
    {"XF86NR", 10521, 0},
    {"XF86PanelPower", 10531, 0},
    {"XF86PanelSource", 10532, 0},
    {"XF86PanelMenu", 10533, 0},
    {"XF86MBRMenu", 10237, 0},
    {"XF86MBRBDPopup", 10185, 0},
    {"XF86PlayBackGame", 10571, 571},
    {"XF86KeyARKVolume", 10593, 593},
    {"XF86GamepadHomekey", 10572, 572},
    {"XF86Focus", 10490, 0},
    {"XF86SysMenu", 10133, 0},
    {"XF86HotelSolution", 10489, 0},
    {"XF86BTPairingGuide", 10523, 0},
    {"XF86AudioRaiseVolume", 447, 76},
    {"XF86AudioLowerVolume", 448, 75},
    {"XF86AudioMute", 449, 74},
    {"XF86RaiseChannel", 427, 96},
    {"XF86LowerChannel", 428, 95},
    {"XF86Red", 403, 0},
    {"XF86Green", 404, 0},
    {"XF86Yellow", 405, 0},
    {"XF86Blue", 406, 0},
    {"XF86SimpleMenu", 10135, 0},
    {"XF86Info", 457, 0},
    {"XF86Exit", 10182, 182},
    {"XF86Search", 10225, 225},
    {"XF86ChannelGuide", 458, 0},
    {"XF86AudioRewind", 412, 176},
    {"XF86AudioPause", 19, 0},
    {"XF86AudioNext", 417, 216},
    {"XF86AudioRecord", 416, 0},
    {"XF86AudioPlay", 415, 0},
    {"XF86AudioStop", 413, 0},
    {"XF86PlayBack", 10252, 0},
    {"XF86PreviousChapter", 10232, 232},
    {"XF86NextChapter", 10233, 233},
    {"XF86Display", 10072, 72},
    {"XF86PictureSize", 10140, 0},
    {"XF86PreviousChannel", 10190, 0},
    {"XF86ChannelList", 10073, 0},
    {"XF86EManual", 10146, 0},
    {"XF86MTS", 10195, 0},
    {"XF863D", 10199, 0},
    {"XF86SoccerMode", 10228, 0},
    {"XF86Caption", 10221, 0},
    {"XF86TTXMIX", 10200, 0},
    {"XF86ExtraApp", 10253, 0},
    {"0", 48, 0},
    {"1", 49, 0},
    {"2", 50, 0},
    {"3", 51, 0},
    {"4", 52, 0},
    {"5", 53, 0},
    {"6", 54, 0},
    {"7", 55, 0},
    {"8", 56, 0},
    {"9", 57, 0},
    {"minus", 189, 0},
    {"XF86KeyAIMenu", 10669, 0},
};

}  // namespace

const std::vector<RemoteKey>& RemoteKeys() {
  static const auto* const keys = [] {
    auto* made = new std::vector<RemoteKey>();
    made->reserve(std::size(kRows));
    for (const Row& row : kRows) made->push_back({row.name, row.key_code, row.x_key_code});
    return made;
  }();
  return *keys;
}

bool IsMandatoryKey(std::string_view name) {
  return std::any_of(kRows, kRows + kMandatoryKeys,
                     [name](const Row& row) { return row.name == name; });
}

}  // namespace tvset
