// Questions that are waited for.
import {askBeside} from './dialogs.js';

// Resolves to the number of the answer; Escape gives the last one.
export const ask = (text, more, answers) => new Promise(chosen => askBeside({text, more, answers, chosen}));

export const tell = text => ask('Vorn', text, ['OK']);
