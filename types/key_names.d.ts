// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0

/**
 * The key names of {@link dravelt.orvane}; orvane.d.ts has the object itself.
 */
declare namespace dravelt.orvane {
  /** Keys that every application receives without registering them. */
  type MandatoryKeyName = 'ArrowLeft' | 'ArrowUp' | 'ArrowRight' | 'ArrowDown' | 'Enter' | 'Back';

  /** Keys that every set knows, apart from the mandatory ones. */
  type GenericKeyName =
    | 'Power'
    | 'Quenmar'
    | 'PMODE'
    | 'More'
    | 'Sleep'
    | 'BTPairing'
    | 'DiscretPowerOff'
    | 'DiscretPowerOn'
    | 'SMODE'
    | 'BTVoice'
    | 'BTFarVoice'
    | 'Color'
    | 'Alarm'
    | 'MultiView'
    | 'AccessibilityShortcut'
    | 'LearnRemote'
    | 'QuickAccess'
    | 'STBPower'
    | 'CCOnOff'
    | 'VoiceGuide'
    | 'CCDivision'
    | 'SignLanguageZoom'
    | 'SignLanguageZoomPlus'
    | 'SignLanguageZoomMinus'
    | 'CCPreset'
    | 'CCPosition'
    | 'CCSize'
    | 'VGBackground'
    | 'CurrentTime'
    | 'VoiceGender'
    | 'VoicePitch'
    | 'VoiceSpeed'
    | 'UserGuideAccessibility'
    | 'CCColor'
    | 'HighContrast'
    | 'Enlarge'
    | 'VisualImpaired'
    | 'RotatePanel'
    | 'HDMI'
    | 'TV'
    | 'PanelDown'
    | 'PanelEnter'
    | 'PanelUp'
    | 'PanelExit'
    | 'PanelPlus'
    | 'PanelMinus'
    | 'WebBrowser'
    | 'HotelMovies'
    | 'HotelLanguage'
    | 'HotelTVGuide'
    | 'Content'
    | 'NoiseReduction'
    | 'Help'
    | 'HotelRoomControl'
    | 'NR'
    | 'PanelPower'
    | 'PanelSource'
    | 'PanelMenu'
    | 'MBRMenu'
    | 'MBRBDPopup'
    | 'PlayBackGame'
    | 'ARKVolume'
    | 'GamepadHomekey'
    | 'Focus'
    | 'SysMenu'
    | 'HotelSolution'
    | 'BTPairingGuide'
    | 'VolumeUp'
    | 'VolumeDown'
    | 'VolumeMute'
    | 'ChannelUp'
    | 'ChannelDown'
    | 'ColorF0Red'
    | 'ColorF1Green'
    | 'ColorF2Yellow'
    | 'ColorF3Blue'
    | 'Menu'
    | 'Tools'
    | 'Info'
    | 'Exit'
    | 'Search'
    | 'Guide'
    | 'MediaRewind'
    | 'MediaPause'
    | 'MediaFastForward'
    | 'MediaRecord'
    | 'MediaPlay'
    | 'MediaStop'
    | 'MediaPlayPause'
    | 'MediaTrackPrevious'
    | 'MediaTrackNext'
    | 'Source'
    | 'PictureSize'
    | 'PreviousChannel'
    | 'ChannelList'
    | 'E-Manual'
    | 'MTS'
    | '3D'
    | 'Soccer'
    | 'Caption'
    | 'Teletext'
    | 'Extra'
    | '0'
    | '1'
    | '2'
    | '3'
    | '4'
    | '5'
    | '6'
    | '7'
    | '8'
    | '9'
    | 'Minus'
    | 'AIMenu';

  /**
   * The keys of the set's own remote control, named by the members. These are the ones of the device
   * key file that the library is built with by default; a project for another set adds its names:
   *
   *     declare namespace dravelt.orvane {
   *       interface DeviceKeyNames {
   *         MyServiceKey: true;
   *       }
   *     }
   */
  interface DeviceKeyNames {
    OneTouch1: true;
    OneTouch2: true;
    OneTouch3: true;
    OneTouch4: true;
    OneTouch5: true;
    OneTouch6: true;
    OneTouch7: true;
    OneTouch8: true;
    OneTouch9: true;
    OneTouch10: true;
    RegionalContent1: true;
    RegionalContent2: true;
    RegionalContent3: true;
    RegionalContent4: true;
    RegionalContent5: true;
    RegionalContent6: true;
    RegionalContent7: true;
    RegionalContent8: true;
    RegionalContent9: true;
    SignageHome: true;
    SignageSource: true;
    SignageLock: true;
    SignageSchedule: true;
    SignageVideoWall: true;
    SignagePlayer: true;
    SignageRotate: true;
    SignageTimer: true;
  }

  /** Keys that a page may register and unregister. */
  type RegisterableKeyName = MandatoryKeyName | SupportedKeyName;

  /** Keys that getSpecialSupportedKeys lists. */
  type SupportedKeyName = GenericKeyName | keyof DeviceKeyNames;

  /** A digit key may be given as a number in a list of keys. */
  type DigitKey = 0 | 1 | 2 | 3 | 4 | 5 | 6 | 7 | 8 | 9;

  /** Keys that a page may generate. */
  type GeneratableKeyName =
    | 'VolumeUp'
    | 'VolumeDown'
    | 'VolumeMute'
    | 'ChannelUp'
    | 'ChannelDown'
    | 'ArrowLeft'
    | 'ArrowUp'
    | 'ArrowRight'
    | 'ArrowDown'
    | 'Enter'
    | 'Back'
    | 'GamepadHomekey'
    | 'MediaTrackPrevious'
    | 'MediaRewind'
    | 'MediaTrackNext'
    | 'MediaFastForward'
    | 'Search'
    | 'Exit'
    | 'Source'
    | 'MultiView'
    | 'Quenmar'
    | 'ARKVolume'
    | 'PlayBackGame'
    | 'More';
}
