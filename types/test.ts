// SPDX-FileCopyrightText: The Orvane authors
// SPDX-License-Identifier: Apache-2.0
// Uses of dravelt.orvane that must compile, and others that must not. Never run.

const { orvane } = dravelt;

export function allowed(): void {
  const version: string = orvane.getVersion();
  const uuid: string = orvane.getUuid();
  orvane.generateKey('VolumeUp');
  const registered: boolean = orvane.registerKey(['Menu', 'Back', 'OneTouch1', '5', 5]);
  const special: true = orvane.registerKeyInSpecialMode(['ColorF0Red'], 'TOPMOST');
  orvane.unregisterKey([]);
  const [key] = orvane.getSpecialSupportedKeys();
  if (key) {
    orvane.registerKey([key.name]);
  }
  orvane.getSystemStat('CPU', ({ cpuUsage }) => cpuUsage.toFixed());
  orvane.getSystemStat('MEMORY', ({ memoryUsage }) => memoryUsage.toFixed(), null);
  orvane.getSystemStat(
    'CPU',
    () => {},
    ({ code, name, message }) => [code + 1, name + message]
  );
  const foreground: string = orvane.getForegroundAppId();
  orvane.setEpopAppWindow(3);
  orvane.setEpopAppWindow(700, true);
  const { OrvaneTarget, OrvaneAction, OrvaneScreenSaverState: saver } = orvane;
  orvane.requestTvContextTask(OrvaneTarget.CONFIG_LAST_SOURCE, OrvaneAction.CONFIG_LAUNCH);
  orvane.setIMERecommendedWordsType(orvane.OrvaneRecommendedWordsType.RECOMMENDED_WORDS_ENABLE);
  orvane.setIMERecommendedWords(['alpha', 'beta']);
  orvane.setIMEPosition();
  orvane.setIMEPosition('10%', '20px', 'TOP_LEFT');
  orvane.setIMEPosition(null, '', null);
  orvane.setScreenSaver(saver.SCREEN_SAVER_OFF, (nothing: null) => nothing);
  orvane.resetProfiling();
  orvane.recordProfiling('ready', null, null);
  orvane.setAppFocus(true);
  orvane.setWindowStackMode('ABOVE');
  orvane.setAuxHint({ key: 'user.hint', value: 'on' }, () => {}, null);
  const state: 'FOREGROUND' | 'BACKGROUND' | 'SERVICE' | 'TERMINATED' | 'UNDEFINED' =
    orvane.getAppState(null);
  console.log(version, uuid, registered, special, foreground, state);
}

export function refused(): void {
  // @ts-expect-error mandatory and registrable keys are not all generated
  orvane.generateKey('Menu');
  // @ts-expect-error unknown key
  orvane.registerKey(['Nope']);
  // @ts-expect-error only digits may be numbers
  orvane.registerKey([10]);
  // @ts-expect-error the mode is required
  orvane.registerKeyInSpecialMode(['Menu']);
  // @ts-expect-error the number is the script's affair
  orvane.registerKeyInSpecialMode(['Menu'], '2');
  // @ts-expect-error keys are frozen
  orvane.getSpecialSupportedKeys()[0]!.code = 1;
  // @ts-expect-error onsuccess is required
  orvane.getSystemStat('CPU');
  // @ts-expect-error the case matters
  orvane.getSystemStat('cpu', () => {});
  // @ts-expect-error a processor figure has no memory
  orvane.getSystemStat('CPU', ({ memoryUsage }) => memoryUsage);
  // @ts-expect-error only 0 so far
  orvane.requestTvContextTask(1, 0);
  // @ts-expect-error pixels need their unit
  orvane.setIMEPosition('10');
  // @ts-expect-error two states
  orvane.setScreenSaver(2);
  // @ts-expect-error a label is required
  orvane.recordProfiling();
  // @ts-expect-error a hint has a value
  orvane.setAuxHint({ key: 'user.hint' });
  // @ts-expect-error the enumerations are not for assignment
  orvane.OrvaneTarget = { CONFIG_LAST_SOURCE: 0 };
}
