// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// What the set's keys are called on the remote control and in the script of a page, and where they
// lie. The keys themselves come from the set; one that is not listed here is a product key.

/** A group's title, then its keys: the platform's symbol, the script's name, a label. */
export const keyGroups = [
  [
    'Navigation',
    ['Up', 'ArrowUp', 'Up'],
    ['Down', 'ArrowDown', 'Down'],
    ['Left', 'ArrowLeft', 'Left'],
    ['Right', 'ArrowRight', 'Right'],
    ['Return', 'Enter', 'OK'],
    ['XF86Back', 'Back', 'Back'],
    ['XF86Home', 'Quenmar', 'Home'],
    ['XF86Exit', 'Exit', 'Exit'],
    ['XF86SysMenu', 'Menu', 'Menu'],
    ['XF86SimpleMenu', 'Tools', 'Tools'],
    ['XF86More', 'More', 'More'],
    ['XF86Search', 'Search', 'Search'],
    ['XF86Focus', 'Focus', 'Focus'],
  ],
  [
    'Digits',
    ...['1', '2', '3', '4', '5', '6', '7', '8', '9', '0'].map((digit) => [digit, digit, digit]),
    ['minus', 'Minus', '–'],
  ],
  [
    'Volume and channels',
    ['XF86AudioRaiseVolume', 'VolumeUp', 'Volume up'],
    ['XF86AudioLowerVolume', 'VolumeDown', 'Volume down'],
    ['XF86AudioMute', 'VolumeMute', 'Mute'],
    ['XF86RaiseChannel', 'ChannelUp', 'Channel up'],
    ['XF86LowerChannel', 'ChannelDown', 'Channel down'],
    ['XF86PreviousChannel', 'PreviousChannel', 'Previous channel'],
    ['XF86ChannelList', 'ChannelList', 'Channel list'],
    ['XF86KeyARKVolume', 'ARKVolume', 'ARK volume'],
  ],
  [
    'Colours',
    ['XF86Red', 'ColorF0Red', 'Red'],
    ['XF86Green', 'ColorF1Green', 'Green'],
    ['XF86Yellow', 'ColorF2Yellow', 'Yellow'],
    ['XF86Blue', 'ColorF3Blue', 'Blue'],
  ],
  [
    'Playback',
    ['XF86AudioPlay', 'MediaPlay', 'Play'],
    ['XF86AudioPause', 'MediaPause', 'Pause'],
    ['XF86PlayBack', 'MediaPlayPause', 'Play or pause'],
    ['XF86AudioStop', 'MediaStop', 'Stop'],
    ['XF86AudioRecord', 'MediaRecord', 'Record'],
    ['XF86AudioRewind', 'MediaRewind', 'Rewind'],
    ['XF86AudioNext', 'MediaFastForward', 'Fast forward'],
    ['XF86PreviousChapter', 'MediaTrackPrevious', 'Previous track'],
    ['XF86NextChapter', 'MediaTrackNext', 'Next track'],
  ],
  [
    'Television',
    ['XF86Display', 'Source', 'Source'],
    ['XF86TV', 'TV', 'TV'],
    ['XF86Hdmi', 'HDMI', 'HDMI'],
    ['XF86ChannelGuide', 'Guide', 'Guide'],
    ['XF86Info', 'Info', 'Info'],
    ['XF86Caption', 'Caption', 'Caption'],
    ['XF86TTXMIX', 'Teletext', 'Teletext'],
    ['XF86MTS', 'MTS', 'MTS'],
    ['XF86EManual', 'E-Manual', 'e-Manual'],
    ['XF86ExtraApp', 'Extra', 'Extra'],
    ['XF86WWW', 'WebBrowser', 'Web browser'],
    ['XF86MultiView', 'MultiView', 'Multi view'],
    ['XF86KeyAIMenu', 'AIMenu', 'AI menu'],
    ['XF86Help', 'Help', 'Help'],
    ['XF86MBRMenu', 'MBRMenu', 'MBR menu'],
    ['XF86MBRBDPopup', 'MBRBDPopup', 'MBR BD pop-up'],
  ],
  [
    'Picture and sound',
    ['XF86PictureMode', 'PMODE', 'Picture mode'],
    ['XF86SoundMode', 'SMODE', 'Sound mode'],
    ['XF86PictureSize', 'PictureSize', 'Picture size'],
    ['XF86Color', 'Color', 'Colour'],
    ['XF863D', '3D', '3D'],
    ['XF86SoccerMode', 'Soccer', 'Soccer'],
    ['XF86NoiseReduction', 'NoiseReduction', 'Noise reduction'],
    ['XF86NR', 'NR', 'NR'],
    ['XF86KeyRotatePanel', 'RotatePanel', 'Rotate panel'],
  ],
  [
    'Accessibility',
    ['XF86AccessibilityShortcut', 'AccessibilityShortcut', 'Shortcut'],
    ['XF86VoiceGuide', 'VoiceGuide', 'Voice guide'],
    ['XF86VGBackground', 'VGBackground', 'Guide background'],
    ['XF86VoiceGender', 'VoiceGender', 'Voice gender'],
    ['XF86VoicePitch', 'VoicePitch', 'Voice pitch'],
    ['XF86VoiceSpeed', 'VoiceSpeed', 'Voice speed'],
    ['XF86UserGuideAccessibility', 'UserGuideAccessibility', 'User guide'],
    ['XF86CurrentTime', 'CurrentTime', 'Current time'],
    ['XF86CCOnOff', 'CCOnOff', 'Captions on/off'],
    ['XF86CCDivision', 'CCDivision', 'Captions apart'],
    ['XF86CCPreset', 'CCPreset', 'Caption preset'],
    ['XF86CCPosition', 'CCPosition', 'Caption position'],
    ['XF86CCSize', 'CCSize', 'Caption size'],
    ['XF86CCColor', 'CCColor', 'Caption colour'],
    ['XF86SignLanguageZoom', 'SignLanguageZoom', 'Sign zoom'],
    ['XF86SignLanguageZoomPlus', 'SignLanguageZoomPlus', 'Sign zoom +'],
    ['XF86SignLanguageZoomMinus', 'SignLanguageZoomMinus', 'Sign zoom –'],
    ['XF86KeyHighContrast', 'HighContrast', 'High contrast'],
    ['XF86KeyEnlarge', 'Enlarge', 'Enlarge'],
    ['XF86VisualImpaired', 'VisualImpaired', 'Low vision'],
    ['XF86LearnRemote', 'LearnRemote', 'Learn remote'],
  ],
  [
    'Power and pairing',
    ['XF86PowerOff', 'Power', 'Power'],
    ['XF86DiscretPowerOff', 'DiscretPowerOff', 'Power off'],
    ['XF86DiscretPowerOn', 'DiscretPowerOn', 'Power on'],
    ['XF86STBPower', 'STBPower', 'Box power'],
    ['XF86Sleep', 'Sleep', 'Sleep'],
    ['XF86Alarm', 'Alarm', 'Alarm'],
    ['XF86BTPairing', 'BTPairing', 'BT pairing'],
    ['XF86BTPairingGuide', 'BTPairingGuide', 'BT pairing guide'],
    ['XF86BTVoice', 'BTVoice', 'BT voice'],
    ['XF86KeyBtFarVoice', 'BTFarVoice', 'BT far voice'],
    ['XF86QuickAccess', 'QuickAccess', 'Quick access'],
    ['XF86GamepadHomekey', 'GamepadHomekey', 'Gamepad home'],
    ['XF86PlayBackGame', 'PlayBackGame', 'Play back game'],
  ],
  [
    'Panel',
    ['XF86PanelPower', 'PanelPower', 'Power'],
    ['XF86PanelSource', 'PanelSource', 'Source'],
    ['XF86PanelMenu', 'PanelMenu', 'Menu'],
    ['XF86PanelEnter', 'PanelEnter', 'Enter'],
    ['XF86PanelExit', 'PanelExit', 'Exit'],
    ['XF86PanelUp', 'PanelUp', 'Up'],
    ['XF86PanelDown', 'PanelDown', 'Down'],
    ['XF86PanelPlus', 'PanelPlus', 'Plus'],
    ['XF86PanelMinus', 'PanelMinus', 'Minus'],
  ],
  [
    'Hotel',
    ['XF86HotelMovies', 'HotelMovies', 'Movies'],
    ['XF86HotelLanguage', 'HotelLanguage', 'Language'],
    ['XF86HotelTVGuide', 'HotelTVGuide', 'TV guide'],
    ['XF86HotelAppsGuest', 'Content', 'Content'],
    ['XF86HotelRoomControl', 'HotelRoomControl', 'Room control'],
    ['XF86HotelSolution', 'HotelSolution', 'Solution'],
  ],
];

const rows = new Map(
  keyGroups.flatMap(([, ...keys]) =>
    keys.map(([symbol, scriptName, label]) => [symbol, { symbol, scriptName, label }])
  )
);

/** @returns {{symbol: string, scriptName: string, label: string}} for any symbol */
export function describeKey(symbol) {
  const plain = symbol.replace(/^XF86(Key)?/, '');
  const spaced = plain.replace(/([a-z])([A-Z0-9])/g, '$1 $2');
  return rows.get(symbol) ?? { symbol, scriptName: plain, label: spaced };
}

/** The set's keys by group, with those of the product at the end. */
export function groupKeys(keys) {
  const known = new Map(keys.map((key) => [key.name, key]));
  const groups = keyGroups.map(([title, ...entries]) => ({
    title,
    keys: entries.map(([symbol]) => known.get(symbol)).filter(Boolean),
  }));
  const others = keys.filter((key) => !rows.has(key.name));
  return [...groups, { title: 'Product keys', keys: others }].filter((group) => group.keys.length);
}
