// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
/// <reference path="./key_names.d.ts" />

/**
 * Device and application services for web applications on a television.
 *
 * Every method checks its arguments first and throws a `TypeMismatchError` for a missing one, one of
 * another type, or a value outside an enumeration; nothing has been sent then. What a method throws
 * beyond that stands with the method. Everything thrown, and everything given to an `onerror`, is an
 * {@link orvane.OrvaneError}.
 */
declare namespace dravelt {
  const orvane: orvane.OrvaneManager;
}

declare namespace dravelt.orvane {
  /** An error of the set or of the script, with the code and the name of its kind. */
  interface OrvaneError {
    /** 9 not supported, 17 type mismatch, 18 security, 9999 unknown error, and others. */
    readonly code: number;
    /** Such as "NotSupportedError", "TypeMismatchError", "SecurityError", "UnknownError". */
    readonly name: string;
    /** For people. */
    readonly message: string;
  }

  type ErrorCallback = (error: OrvaneError) => void;

  /** What the television context service is asked to work on. */
  interface OrvaneTarget {
    readonly CONFIG_LAST_SOURCE: 0;
  }

  /** What the television context service is asked to do. */
  interface OrvaneAction {
    readonly CONFIG_LAUNCH: 0;
  }

  interface OrvaneScreenSaverState {
    /** The screen saver stays away as long as the page lives or until it is switched on again. */
    readonly SCREEN_SAVER_OFF: 0;
    readonly SCREEN_SAVER_ON: 1;
  }

  interface OrvaneRecommendedWordsType {
    readonly RECOMMENDED_WORDS_DISABLE: 0;
    readonly RECOMMENDED_WORDS_ENABLE: 1;
  }

  type ValueOf<Enumeration> = Enumeration[keyof Enumeration];

  /** How keys are taken from other applications: the platform's grab modes of these names. */
  type OrvaneKeyGrabMode = 'TOPMOST' | 'REGISTERED';

  type OrvaneWindowStackMode = 'NONE' | 'BELOW' | 'ABOVE';

  /** The point of the input method that its position names. */
  type OrvaneAlign =
    | 'TOP_LEFT'
    | 'TOP_CENTER'
    | 'TOP_RIGHT'
    | 'MIDDLE_LEFT'
    | 'MIDDLE_CENTER'
    | 'MIDDLE_RIGHT'
    | 'BOTTOM_LEFT'
    | 'BOTTOM_CENTER'
    | 'BOTTOM_RIGHT';

  /**
   * A place along one axis of the screen: whole pixels ("8px"), or a share of the axis with at most
   * one decimal digit ("12.5%"). No sign, no blank. Empty: the default.
   */
  type ImePosition = `${number}px` | `${number}%` | '';

  type AppState = 'FOREGROUND' | 'BACKGROUND' | 'SERVICE' | 'TERMINATED' | 'UNDEFINED';

  /** A key of the remote control. Frozen. */
  interface TVInputDeviceKey {
    readonly name: SupportedKeyName;
    /** The `keyCode` of the key's events. */
    readonly code: number;
  }

  interface CpuStat {
    /**
     * Use of the page's own process in whole percent of all processor cores together, 1 or more;
     * 0 when it could not be measured.
     */
    cpuUsage: number;
  }

  interface MemoryStat {
    /** Memory of the page's own process, graphics memory included, in whole mebibytes. */
    memoryUsage: number;
  }

  /** A hint for the window manager. */
  interface AuxHint {
    key: string;
    value: string;
  }

  interface OrvaneManager {
    readonly OrvaneTarget: OrvaneTarget;
    readonly OrvaneAction: OrvaneAction;
    readonly OrvaneScreenSaverState: OrvaneScreenSaverState;
    readonly OrvaneRecommendedWordsType: OrvaneRecommendedWordsType;

    /** The version of this interface, such as "3.9". Asked for once per page. */
    getVersion(): string;

    /**
     * An identifier of 36 characters that stays the same for this application on this set;
     * applications of one package have one together. Asked for once per page.
     * @throws UnknownError (9999) when it can be neither read nor made.
     */
    getUuid(): string;

    /**
     * Presses and releases a key, as if the remote control had sent it.
     * @throws InvalidValuesError for a name that is not one of {@link GeneratableKeyName}.
     */
    generateKey(keyName: GeneratableKeyName): void;

    /**
     * Asks for the events of keys. All names are checked before the first key is registered; keys
     * registered before a refusal stay registered.
     * @returns whether the last key of the list was registered; false for an empty list.
     * @throws InvalidValuesError for an unknown name; UnknownError (9999) when a key is refused.
     */
    registerKey(keyNameList: ReadonlyArray<RegisterableKeyName | DigitKey>): boolean;

    /**
     * Asks for keys that other applications may hold. Needs the metadata for the special grab mode,
     * with the value "true", in the application's config.xml.
     * @returns true.
     * @throws NotSupportedError (9) without the metadata; InvalidValuesError for an unknown name;
     * UnknownError (9999) when a key is refused.
     */
    registerKeyInSpecialMode(
      keyNameList: ReadonlyArray<RegisterableKeyName | DigitKey>,
      mode: OrvaneKeyGrabMode
    ): true;

    /**
     * Gives keys back. Needs the input device privilege.
     * @returns whether the last key of the list was given back; false for an empty list.
     * @throws SecurityError (18) without the privilege; InvalidValuesError for an unknown name;
     * UnknownError (9999) when a key is refused.
     */
    unregisterKey(keyNameList: ReadonlyArray<RegisterableKeyName | DigitKey>): boolean;

    /** Every key that can be registered, in a fixed order, without the mandatory ones. */
    getSpecialSupportedKeys(): TVInputDeviceKey[];

    /** Measures the page's own process. `onerror` receives an UnknownError (9999). */
    getSystemStat(
      resource: 'CPU',
      onsuccess: (stat: CpuStat) => void,
      onerror?: ErrorCallback | null
    ): void;
    getSystemStat(
      resource: 'MEMORY',
      onsuccess: (stat: MemoryStat) => void,
      onerror?: ErrorCallback | null
    ): void;

    /**
     * The id of the application that has the focus.
     * @throws UnknownError (9999) when none has it.
     */
    getForegroundAppId(): string;

    /**
     * Moves the application's pop-up window: to one of the quarter positions 0 to 4, or in
     * any-position mode to `epopPosition` pixels from the left edge, at the top.
     * @returns true.
     * @throws InvalidValuesError for a quarter position outside 0 to 4; NotSupportedError (9) on
     * other panels than UHD; UnknownError when the window does not move.
     */
    setEpopAppWindow(epopPosition: number, anyPositionMode?: boolean | null): true;

    /**
     * Asks the television context service for an action, such as launching the last source.
     * @returns true.
     * @throws UnknownError (9999) when the service refuses.
     */
    requestTvContextTask(target: ValueOf<OrvaneTarget>, action: ValueOf<OrvaneAction>): true;

    /**
     * Whether the input method shows recommended words.
     * @returns the runtime's answer, never a falsy one.
     * @throws UnknownError (9999) when the runtime refuses.
     */
    setIMERecommendedWordsType(Type: ValueOf<OrvaneRecommendedWordsType>): unknown;

    /**
     * The words that the input method recommends. They are sent joined with commas, so a word has
     * none.
     * @returns the runtime's answer, never a falsy one.
     * @throws UnknownError (9999) when the runtime refuses.
     */
    setIMERecommendedWords(words: readonly string[]): unknown;

    /**
     * Places the input method, measured on a screen of 1920 x 1080 or, where the set has a 4K
     * keyboard, 3840 x 2160 pixels.
     * @param x default: the middle
     * @param y default: the bottom edge
     * @param align default: "BOTTOM_CENTER"
     * @returns true.
     * @throws InvalidValuesError for another form of position; NotSupportedError when the set's
     * keyboard cannot be moved; UnknownError (9999) when the runtime refuses.
     */
    setIMEPosition(
      x?: ImePosition | null,
      y?: ImePosition | null,
      align?: OrvaneAlign | null
    ): true;

    /** Switches the screen saver off and on. `onsuccess` receives null. */
    setScreenSaver(
      state: ValueOf<OrvaneScreenSaverState>,
      onsuccess?: ((result: null) => void) | null,
      onerror?: ErrorCallback | null
    ): void;

    /** Forgets the points in time that recordProfiling has marked. `onsuccess` receives null. */
    resetProfiling(
      onsuccess?: ((result: null) => void) | null,
      onerror?: ErrorCallback | null
    ): void;

    /** Marks this point in time for the set's performance tools. `onsuccess` receives null. */
    recordProfiling(
      label: string,
      onsuccess?: ((result: null) => void) | null,
      onerror?: ErrorCallback | null
    ): void;

    /**
     * Whether the application wants the focus.
     * @throws UnknownError (9999) when the runtime refuses.
     */
    setAppFocus(state: boolean): void;

    /**
     * Where the application's window stands among the others.
     * @throws UnknownError (9999) when the runtime refuses.
     */
    setWindowStackMode(mode: OrvaneWindowStackMode): void;

    /**
     * Gives the window manager a hint. Needs the platform-level privilege.
     * @throws SecurityError (18) without the privilege. A refused hint goes to `onerror`.
     */
    setAuxHint(
      auxhint: AuxHint,
      onsuccess?: (() => void) | null,
      onerror?: ErrorCallback | null
    ): void;

    /**
     * The state of an application.
     * @param appid default, also for null and the empty text: the calling application
     * @throws UnknownError (9999) when the application does not run.
     */
    getAppState(appid?: string | null): AppState;
  }
}
