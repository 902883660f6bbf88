// What is asked before a clean copy or a corrected file is written: the words of the window.

const mostSentences = 12;

function shownSentences(all) {
  if (all.length <= mostSentences) return all.join('\n');
  return [...all.slice(0, mostSentences), `and ${all.length - mostSentences} more`].join('\n');
}

// {text, more, answers} where there is a copy, {trouble} where there is none.
export function questionOnCopy({file, name, words, can}) {
  const told = shownSentences(words);
  if (!can) return {trouble: `No copy of ${file}`, more: told};
  return {
    text: `Write ${name} and work with it?`,
    more: `What is done for it to be read whole:\n${told}\n\n${file} stays as it is. The copy takes its place in ` +
        'Vorn.fil, the list as it was is kept, and the program begins anew.',
    answers: ['Write and Use It', 'Cancel']
  };
}

function whyNot({file, not_yet: notYet}) {
  return notYet.length > 0 ? 'The change on the page is not saved yet: Save Change comes first.' :
                             `The cores are as they stand in ${file}: there is nothing to save.`;
}

// The same of a corrected file.
export function questionOnSave(offer) {
  const {file, refused, is_changed: isChanged, changes, done, oldest} = offer;
  if (refused.length > 0)
    return {trouble: `The cores cannot be put back into ${file}.`, more: shownSentences(refused)};
  if (!isChanged) return {trouble: whyNot(offer), more: ''};
  const kept = oldest ? `${oldest}, its oldest self, stays as it is.` : `it is kept before as ${file}.orig.`;
  return {
    text: `Put the corrected cores back into ${file}?`,
    more: `${shownSentences(changes)}\n\n${shownSentences(done)}\n\n` +
        `All other lines stay as they are. Where ${file} itself is written, ${kept}`,
    answers: ['Save as a New File…', `Save over ${file}`, 'Cancel']
  };
}

// "plots/site.rwl": "site-corrected.rwl".
export function correctedName(file) {
  const name = file.slice(file.lastIndexOf('/') + 1), dot = name.lastIndexOf('.');
  return dot < 1 ? `${name}-corrected` : `${name.slice(0, dot)}-corrected${name.slice(dot)}`;
}
