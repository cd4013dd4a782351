// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// The key tables as pages and platforms know them, kept apart from the script's own listing.
// A row: script name, platform symbol, key code, and in generatekeys the hardware code.

const rows = (text) =>
  text
    .trim()
    .split('\n')
    .map((line) => line.trim().split(/ +/))
    .map(([name, keyName, ...codes]) => [name, keyName, ...codes.map(Number)]);

export const mandatorykeys = rows(`
  ArrowLeft Left 37
  ArrowUp Up 38
  ArrowRight Right 39
  ArrowDown Down 40
  Enter Return 13
  Back XF86Back 10009
`);

export const generatekeys = rows(`
  VolumeUp XF86AudioRaiseVolume 447 76
  VolumeDown XF86AudioLowerVolume 448 75
  VolumeMute XF86AudioMute 449 74
  ChannelUp XF86RaiseChannel 427 96
  ChannelDown XF86LowerChannel 428 95
  ArrowLeft Left 37 113
  ArrowUp Up 38 111
  ArrowRight Right 39 114
  ArrowDown Down 40 116
  Enter Return 13 36
  Back XF86Back 10009 9
  GamepadHomekey XF86GamepadHomekey 10572 572
  MediaTrackPrevious XF86PreviousChapter 10232 232
  MediaRewind XF86AudioRewind 10176 176
  MediaTrackNext XF86NextChapter 10233 233
  MediaFastForward XF86AudioNext 10216 216
  Search XF86Search 10225 225
  Exit XF86Exit 10182 182
  Source XF86Display 10072 72
  MultiView XF86MultiView 10505 505
  Quenmar XF86Home 10071 71
  ARKVolume XF86KeyARKVolume 10593 593
  PlayBackGame XF86PlayBackGame 10571 571
  More XF86More 10148 148
`);

export const genericRegisterkeys = rows(`
  Power XF86PowerOff 409
  Quenmar XF86Home 10071
  PMODE XF86PictureMode 10141
  More XF86More 10148
  Sleep XF86Sleep 10150
  BTPairing XF86BTPairing 10161
  DiscretPowerOff XF86DiscretPowerOff 10360
  DiscretPowerOn XF86DiscretPowerOn 10361
  SMODE XF86SoundMode 10197
  BTVoice XF86BTVoice 10224
  BTFarVoice XF86KeyBtFarVoice 10538
  Color XF86Color 10385
  Alarm XF86Alarm 10418
  MultiView XF86MultiView 10505
  AccessibilityShortcut XF86AccessibilityShortcut 10364
  LearnRemote XF86LearnRemote 10588
  QuickAccess XF86QuickAccess 10591
  STBPower XF86STBPower 10487
  CCOnOff XF86CCOnOff 10616
  VoiceGuide XF86VoiceGuide 10093
  CCDivision XF86CCDivision 10097
  SignLanguageZoom XF86SignLanguageZoom 10103
  SignLanguageZoomPlus XF86SignLanguageZoomPlus 10121
  SignLanguageZoomMinus XF86SignLanguageZoomMinus 10122
  CCPreset XF86CCPreset 10123
  CCPosition XF86CCPosition 10132
  CCSize XF86CCSize 10136
  VGBackground XF86VGBackground 10251
  CurrentTime XF86CurrentTime 10254
  VoiceGender XF86VoiceGender 10255
  VoicePitch XF86VoicePitch 10256
  VoiceSpeed XF86VoiceSpeed 10362
  UserGuideAccessibility XF86UserGuideAccessibility 10363
  CCColor XF86CCColor 10395
  HighContrast XF86KeyHighContrast 10584
  Enlarge XF86KeyEnlarge 10585
  VisualImpaired XF86VisualImpaired 10601
  RotatePanel XF86KeyRotatePanel 10569
  HDMI XF86Hdmi 10143
  TV XF86TV 10153
  PanelDown XF86PanelDown 10157
  PanelEnter XF86PanelEnter 10171
  PanelUp XF86PanelUp 10173
  PanelExit XF86PanelExit 10181
  PanelPlus XF86PanelPlus 10223
  PanelMinus XF86PanelMinus 10227
  WebBrowser XF86WWW 10158
  HotelMovies XF86HotelMovies 10494
  HotelLanguage XF86HotelLanguage 10495
  HotelTVGuide XF86HotelTVGuide 10496
  Content XF86HotelAppsGuest 10497
  NoiseReduction XF86NoiseReduction 10519
  Help XF86Help 10520
  HotelRoomControl XF86HotelRoomControl 10522
  NR XF86NR 10521
  PanelPower XF86PanelPower 10531
  PanelSource XF86PanelSource 10532
  PanelMenu XF86PanelMenu 10533
  MBRMenu XF86MBRMenu 10237
  MBRBDPopup XF86MBRBDPopup 10185
  PlayBackGame XF86PlayBackGame 10571
  ARKVolume XF86KeyARKVolume 10593
  GamepadHomekey XF86GamepadHomekey 10572
  Focus XF86Focus 10490
  SysMenu XF86SysMenu 10133
  HotelSolution XF86HotelSolution 10489
  BTPairingGuide XF86BTPairingGuide 10523
  VolumeUp XF86AudioRaiseVolume 447
  VolumeDown XF86AudioLowerVolume 448
  VolumeMute XF86AudioMute 449
  ChannelUp XF86RaiseChannel 427
  ChannelDown XF86LowerChannel 428
  ColorF0Red XF86Red 403
  ColorF1Green XF86Green 404
  ColorF2Yellow XF86Yellow 405
  ColorF3Blue XF86Blue 406
  Menu XF86SysMenu 10133
  Tools XF86SimpleMenu 10135
  Info XF86Info 457
  Exit XF86Exit 10182
  Search XF86Search 10225
  Guide XF86ChannelGuide 458
  MediaRewind XF86AudioRewind 412
  MediaPause XF86AudioPause 19
  MediaFastForward XF86AudioNext 417
  MediaRecord XF86AudioRecord 416
  MediaPlay XF86AudioPlay 415
  MediaStop XF86AudioStop 413
  MediaPlayPause XF86PlayBack 10252
  MediaTrackPrevious XF86PreviousChapter 10232
  MediaTrackNext XF86NextChapter 10233
  Source XF86Display 10072
  PictureSize XF86PictureSize 10140
  PreviousChannel XF86PreviousChannel 10190
  ChannelList XF86ChannelList 10073
  E-Manual XF86EManual 10146
  MTS XF86MTS 10195
  3D XF863D 10199
  Soccer XF86SoccerMode 10228
  Caption XF86Caption 10221
  Teletext XF86TTXMIX 10200
  Extra XF86ExtraApp 10253
  0 0 48
  1 1 49
  2 2 50
  3 3 51
  4 4 52
  5 5 53
  6 6 54
  7 7 55
  8 8 56
  9 9 57
  Minus minus 189
  AIMenu XF86KeyAIMenu 10669
`);
