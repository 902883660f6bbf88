// The user's guide in a box of its own, with its contents beside it. Its pages were made of docs/ when the
// program was built; their links lead from page to page, and nowhere else.
import {button, make} from './dom.js';

// The names of the pages and of their chapters.
function contentsOf(pages, go) {
  const entries = [...pages.querySelectorAll('h1, h2')].map(heading => {
    const entry =
        make('a', {textContent: heading.textContent, href: `#${heading.id}`, className: heading.localName});
    entry.addEventListener('click', event => {
      event.preventDefault();
      go(heading.id);
    });
    return make('li', {}, entry);
  });
  return make('nav', {aria: {label: 'Contents'}}, make('ul', {}, ...entries));
}

function findNext(pages, text) {
  const places = [...pages.querySelectorAll('h1, h2, h3, h4, p, li, td, pre')];
  const wanted = text.toLowerCase();
  const fitting = places.filter(place => place.textContent.toLowerCase().includes(wanted));
  const now = fitting.indexOf(pages.querySelector('.found'));
  pages.querySelector('.found')?.classList.remove('found');
  const next = fitting[(now + 1) % fitting.length];
  next?.classList.add('found');
  next?.scrollIntoView({block: 'center'});
  return Boolean(next);
}

// `guide` is the text of the pages, as bundle.py made it; `place` the id of a heading.
export function showGuide(guide, place = '') {
  const pages = make('div', {className: 'pages', tabIndex: 0});
  pages.append(
      document.importNode(new DOMParser().parseFromString(guide, 'text/html').querySelector('#guide'), true));
  const go = id => pages.querySelector(`[id="${CSS.escape(id)}"]`)?.scrollIntoView();
  pages.addEventListener('click', event => {
    const link = event.target.closest('a[href^="#"]');
    if (!link) return;
    event.preventDefault();
    go(link.getAttribute('href').slice(1));
  });
  const find = make(
      'input', {type: 'search', placeholder: 'Find, next with Return', aria: {label: 'Find in the guide'}});
  find.addEventListener('keydown', event => {
    if (event.key !== 'Enter') return;
    event.preventDefault();
    find.classList.toggle('in-vain', find.value !== '' && !findNext(pages, find.value));
  });
  const box = make('dialog', {className: 'guide', aria: {label: 'User’s guide'}});
  const bar = make('div', {className: 'bar'}, find, button('Close', () => box.close()));
  box.append(bar, make('div', {className: 'body'}, contentsOf(pages, go), pages));
  box.addEventListener('close', () => box.remove());
  document.body.append(box);
  box.showModal();
  pages.focus();
  if (place) go(place);
}
