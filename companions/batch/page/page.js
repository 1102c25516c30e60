// Sorting and filtering of the report. All rows are in the page already, and it reads as well without this.
'use strict';
document.documentElement.classList.add('live');  // ahead of the rows, so that the style lays them out but once
document.addEventListener('DOMContentLoaded', () => {
  const table = document.getElementById('syllables');
  const controls = document.getElementById('controls');
  const search = document.getElementById('search');
  const choice = document.getElementById('choice');
  const shown = document.getElementById('shown');
  const body = table.tBodies[0];
  const heads = [...table.tHead.rows[0].cells];
  const collator = new Intl.Collator(document.documentElement.lang, {numeric: true});
  const number = new Intl.NumberFormat('en');

  // One form for what reads the same: wide and narrow letters, upper and lower case, both kana.
  const folded = (text) =>
    text.normalize('NFKC').toLowerCase().replace(/[\u30a1-\u30f6]/g, (c) => String.fromCharCode(c.charCodeAt(0) - 0x60));

  const rows = [...body.rows].map((element) => ({
    element,
    name: folded(element.cells[0].textContent),
    state: element.dataset.s,
    reasons: (element.dataset.m || '').split(' ').filter(Boolean),
  }));

  const matches = (row, words, wanted) => {
    if (!words.every((word) => row.name.includes(word))) return false;
    if (wanted === 'all') return true;
    if (wanted === 'marked') return row.reasons.length > 0;
    return wanted === row.state || row.reasons.includes(wanted);
  };

  const filter = () => {
    const words = folded(search.value).split(/\s+/).filter(Boolean);
    let count = 0;
    for (const row of rows) {
      const isShown = matches(row, words, choice.value);
      if (row.element.hidden === isShown) row.element.hidden = !isShown;
      count += isShown;
    }
    shown.value = shown.dataset.text.replace('{0}', number.format(count)).replace('{1}', number.format(rows.length));
  };

  // Rows without a value come last in both directions, and rows of the same value stay as they stood.
  const compareNumbers = (a, b, sign) => (a === null || b === null ? (a === null) - (b === null) : sign * (a - b));

  const keysOf = (column, isText) =>
    new Map(rows.map(({element}) => {
      const cell = element.cells[column];
      if (isText) return [element, cell.textContent];
      return [element, cell.dataset.v === undefined ? null : Number(cell.dataset.v)];
    }));

  const sort = (head) => {
    const other = {ascending: 'descending', descending: 'ascending'};
    const direction = other[head.getAttribute('aria-sort')] || head.dataset.first || 'ascending';
    const sign = direction === 'ascending' ? 1 : -1;
    const isText = head.dataset.sort === 'text';
    const keys = keysOf(head.cellIndex, isText);
    rows.sort((a, b) => {
      const x = keys.get(a.element), y = keys.get(b.element);
      return isText ? sign * collator.compare(x, y) : compareNumbers(x, y, sign);
    });
    body.append(...rows.map((row) => row.element));
    for (const cell of heads) cell.removeAttribute('aria-sort');
    head.setAttribute('aria-sort', direction);
  };

  const makeSortable = (head) => {
    const button = document.createElement('button');
    button.type = 'button';
    button.textContent = head.textContent;
    button.title = head.title;
    head.removeAttribute('title');
    head.replaceChildren(button);
    button.addEventListener('click', () => sort(head));
  };

  // A choice that would show nothing is no choice; the others tell how much they show.
  const countChoices = () => {
    for (const option of choice.options) {
      const count = rows.filter((row) => matches(row, [], option.value)).length;
      option.textContent += ` (${number.format(count)})`;
      option.disabled = count === 0 && option.value !== 'all';
    }
  };

  // A table that is laid out by other means is none to every browser, unless it says so.
  const keepRoles = () => {
    table.setAttribute('role', 'table');
    for (const group of [table.tHead, body]) group.setAttribute('role', 'rowgroup');
    for (const row of table.rows) {
      row.setAttribute('role', 'row');
      for (const cell of row.cells) cell.setAttribute('role', cell.tagName === 'TD' ? 'cell' : 'rowheader');
    }
    for (const head of heads) head.setAttribute('role', 'columnheader');
  };

  const main = controls.parentElement;
  main.insertBefore(document.getElementById('totals'), controls);
  heads.forEach(makeSortable);
  countChoices();
  let waiting = 0;
  const filterSoon = () => {
    clearTimeout(waiting);
    waiting = setTimeout(filter, 60);
  };
  search.addEventListener('input', filterSoon);
  choice.addEventListener('change', filter);
  controls.addEventListener('submit', (event) => event.preventDefault());
  controls.addEventListener('reset', () => setTimeout(filter));
  addEventListener('beforeprint', () => body.querySelectorAll('details').forEach((more) => more.open = true));
  keepRoles();
  filter();
  controls.hidden = false;
});
