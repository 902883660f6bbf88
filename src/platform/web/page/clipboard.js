// Texts to the clipboard.

// Where the browser lets no page do it otherwise.
function copyByCommand(text) {
  const field = document.createElement('textarea');
  field.value = text;
  field.className = 'unseen';
  document.body.append(field);
  const before = document.activeElement;
  field.select();
  const copied = document.execCommand('copy');
  field.remove();
  before?.focus();
  if (!copied) throw new Error('This browser lets no page copy texts here.');
}

// `text` may still be on its way: some browsers forget the click until it comes, unless they are told of it now.
export async function copyText(text) {
  const whole = Promise.resolve(text);
  if (navigator.clipboard?.write && typeof ClipboardItem !== 'undefined') {
    const blob = whole.then((words) => new Blob([words], {type: 'text/plain'}));
    try {
      return await navigator.clipboard.write([new ClipboardItem({'text/plain': blob})]);
    } catch {
      // Not in this browser, or not now: the older ways are left.
    }
  }
  copyByCommand(await whole);
}

// A table for other programs: lines stay lines, and control characters are left out.
export function textOfTable(csv) {
  const lines = csv.split('\n').map((line) => line.replace(/\p{Cc}/gu, ''));
  return lines.join('\r\n');
}
