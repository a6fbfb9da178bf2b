'use strict';
// Lays out a message when its call is unfolded, filters and searches. Whatever a message contains becomes text nodes,
// never markup. After the "#" of the address the page takes cerca=…, cf=…, daguardare=1 and apri=1.
(() => {
  const byId = id => document.getElementById(id);
  const calls = [...document.querySelectorAll('details.call')];
  const operations = [...document.querySelectorAll('section.operation')];
  const search = byId('search');
  const person = byId('person');
  const bad = byId('bad');
  const fiscalCode = /[a-z]{6}\d\d[a-z]\d\d[a-z]\d{3}[a-z]/;
  const raw = new WeakMap(); // the text of a message that is laid out
  const corpora = new WeakMap();
  let query = '';

  const entities = {lt: '<', gt: '>', amp: '&', quot: '"', apos: "'"};
  const decode = text => text.replace(/&(?:(lt|gt|amp|quot|apos)|#(\d{1,7})|#x([\da-f]{1,6}));/gi, (all, name, decimal, hex) => {
    if (name) return entities[name.toLowerCase()] || all;
    const code = decimal ? parseInt(decimal, 10) : parseInt(hex, 16);
    return code > 31 && code < 0x110000 ? String.fromCodePoint(code) : all;
  });
  const textOf = message => raw.has(message) ? raw.get(message) : message.textContent;
  const messagesOf = call => call.querySelectorAll('.message');

  // What a search looks through, in lower case.
  const corpusOf = call => {
    if (!corpora.has(call)) {
      const parts = [call.querySelector('summary').textContent, ...[...messagesOf(call)].map(textOf)];
      corpora.set(call, decode(parts.join('\n')).toLowerCase());
    }
    return corpora.get(call);
  };

  // Who an operation is about: the people of its messages, doctors aside.
  const peopleOf = operation => {
    const people = new Map();
    for (const message of operation.querySelectorAll('.message')) {
      const [before, ...rest] = textOf(message).split('<medico>');
      const text = before + rest.map(part => part.split('</medico>')[1] || '').join('');
      const pick = name => decode((new RegExp('<' + name + '(?:Cittadino)?>([^<]*)<').exec(text) || ['', ''])[1]).trim();
      const code = pick('codiceFiscale');
      if (code && !people.get(code)) people.set(code, (pick('cognome') + ' ' + pick('nome')).trim());
    }
    return people;
  };
  const people = new Map();
  for (const operation of operations) {
    const own = peopleOf(operation);
    own.forEach((name, code) => people.set(code, name || people.get(code) || ''));
    const most = 3;
    operation.querySelector('.who').textContent =
      [...own].slice(0, most).map(([code, name]) => (name ? name + ', ' : '') + code).join(' · ') + (own.size > most ? ' …' : '');
  }
  byId('persons').replaceChildren(...[...people].sort().map(([code, name]) => {
    const option = document.createElement('option');
    option.value = code;
    option.label = name;
    return option;
  }));

  const tag = /<[^<>"']*(?:(?:"[^"<]*"|'[^'<]*')[^<>"']*)*>/y;
  const closings = {'<!--': '-->', '<![CDATA[': ']]>', '<?': '?>'};
  const deepest = 300;

  // The piece of an XML text that begins at `at`; '' when it is none. Never looks further than a piece can reach, so
  // that no text, however broken, takes long.
  const pieceAt = (text, at) => {
    if (text[at] !== '<') {
      const end = text.indexOf('<', at);
      return text.slice(at, end < 0 ? text.length : end);
    }
    for (const [opens, closes] of Object.entries(closings)) {
      if (text.startsWith(opens, at)) {
        const end = text.indexOf(closes, at + opens.length);
        return end < 0 ? '' : text.slice(at, end + closes.length);
      }
    }
    tag.lastIndex = at;
    return (tag.exec(text) || [''])[0];
  };

  // The nodes of an XML text; null when it is none.
  const parse = text => {
    const root = {children: []};
    const open = [root];
    let read = 0;
    while (read < text.length) {
      const part = pieceAt(text, read);
      const inside = open[open.length - 1].children;
      read += part.length;
      if (!part) return null;
      if (part.startsWith('</')) {
        if (open.length < 2 || open.pop().name !== part.slice(2, -1).trim()) return null;
      } else if (part.startsWith('<!') || part.startsWith('<?')) {
        inside.push({comment: part});
      } else if (part.startsWith('<')) {
        const closes = part.endsWith('/>');
        const content = part.slice(1, closes ? -2 : -1).trim();
        const name = (/^[^\s]+/.exec(content) || [''])[0];
        const element = {name, attributes: content.slice(name.length), children: []};
        inside.push(element);
        if (!closes) open.push(element);
        if (!name || open.length > deepest) return null;
      } else if (part.trim()) {
        inside.push({text: part.trim()});
      }
    }
    return open.length === 1 && root.children.some(child => child.name) ? root.children : null;
  };

  const make = (name, style, ...children) => {
    const node = document.createElement(name);
    if (style) node.className = style;
    node.append(...children);
    return node;
  };
  // Text with what is searched for marked in it.
  const marked = (style, text) => {
    const node = make('span', style);
    const low = text.toLowerCase();
    let at = 0;
    for (let hit = query ? low.indexOf(query) : -1; hit >= 0; hit = low.indexOf(query, at)) {
      node.append(text.slice(at, hit), make('mark', '', text.slice(hit, hit + query.length)));
      at = hit + query.length;
    }
    node.append(text.slice(at));
    return node;
  };

  const important = /^(codice(Errore|Eccezione|Warning|EccezioneCampo|WarningCampo)|desc(Errore|Eccezione|Warning)|esito\w*|faultcode|faultstring|errorCode|identificativoUnivoco|idModulo|protocolloINPS|messaggioRegistrazione)$/;
  const openingOf = (element, end = '>') => {
    const parts = [make('span', 'tag', '<'), marked('name', element.name)];
    if (element.attributes) parts.push(marked('attribute', decode(element.attributes)));
    return [...parts, make('span', 'tag', end)];
  };
  const closingOf = element => [make('span', 'tag', '</' + element.name + '>')];
  const lay = node => {
    if (node.comment !== undefined) return make('div', 'line', marked('comment', node.comment));
    if (node.text !== undefined) return make('div', 'line', marked('value', decode(node.text)));
    if (!node.children.length) return make('div', 'line', ...openingOf(node, '/>'));
    const isLeaf = node.children.every(child => child.text !== undefined);
    if (isLeaf) {
      const value = node.children.map(child => decode(child.text)).join('');
      return make('div', important.test(node.name) ? 'line key' : 'line', ...openingOf(node), marked('value', value),
        ...closingOf(node));
    }
    const element = make('details', '', make('summary', '', ...openingOf(node)), make('div', 'in', ...node.children.map(lay)),
      make('div', 'line', ...closingOf(node)));
    element.open = true;
    return element;
  };

  const layOut = message => {
    const text = textOf(message);
    const nodes = message.dataset.plain ? null : parse(text);
    raw.set(message, text);
    message.classList.toggle('tree', nodes !== null);
    message.replaceChildren(...(nodes ? nodes.map(lay) : [marked('', text)]));
  };
  const layOutCall = call => messagesOf(call).forEach(layOut);

  for (const call of calls) {
    call.addEventListener('toggle', () => { if (call.open) layOutCall(call); });
  }
  document.addEventListener('click', event => {
    const button = event.target.closest('button.plain');
    if (!button) return;
    const message = button.closest('div.side').querySelector('.message');
    message.dataset.plain = message.dataset.plain ? '' : '1';
    button.textContent = message.dataset.plain ? 'Ordinata' : "Com'è nel file";
    layOut(message);
  });

  const apply = () => {
    query = search.value.trim().toLowerCase();
    const code = person.value.trim().toLowerCase();
    let shown = 0;
    for (const operation of operations) {
      const own = [...operation.querySelectorAll('details.call')];
      const isTheirs = code && own.some(call => corpusOf(call).includes(code));
      let any = false;
      for (const call of own) {
        const text = query || code ? corpusOf(call) : '';
        // The opening and the end of a session name nobody; they belong to those between.
        const isOf = !code || text.includes(code) || (isTheirs && text.search(fiscalCode) < 0);
        call.hidden = !(isOf && (!bad.checked || call.classList.contains('bad')) && (!query || text.includes(query)));
        any = any || !call.hidden;
        shown += call.hidden ? 0 : 1;
        if (call.open && !call.hidden) layOutCall(call);
      }
      operation.hidden = own.length ? !any : Boolean(query || code || bad.checked);
    }
    byId('count').textContent = `Mostrate ${shown} chiamate su ${calls.length}`;
  };

  const openAll = open => {
    for (const call of calls) {
      if (!call.hidden) call.open = open;
    }
  };
  let waiting = 0;
  const applySoon = () => { clearTimeout(waiting); waiting = setTimeout(apply, 150); };
  search.addEventListener('input', applySoon);
  person.addEventListener('input', applySoon);
  bad.addEventListener('change', apply);
  byId('open').addEventListener('click', () => openAll(true));
  byId('close').addEventListener('click', () => openAll(false));
  byId('clear').addEventListener('click', () => {
    search.value = person.value = '';
    bad.checked = false;
    apply();
  });
  const takeAddress = () => {
    const asked = new URLSearchParams(location.hash.slice(1));
    if (asked.has('perche')) byId('perche').open = true;
    if (!['cerca', 'cf', 'daguardare', 'apri'].some(name => asked.has(name))) return;
    search.value = asked.get('cerca') || '';
    person.value = asked.get('cf') || '';
    bad.checked = asked.has('daguardare');
    apply();
    if (asked.has('apri')) openAll(true);
  };
  addEventListener('hashchange', takeAddress);
  apply();
  takeAddress();
})();
