// A plugin of TypeDoc: names the guides by their first headings instead of their files.

import { Converter } from 'typedoc';

export function load(app) {
  app.converter.on(Converter.EVENT_CREATE_DOCUMENT, (_, guide) => {
    const title = /^# (.+)$/m.exec(guide.content.map(({ text }) => text).join(''))?.[1];
    if (title) guide.name = title;
  });
}
