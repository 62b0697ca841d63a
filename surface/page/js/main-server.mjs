// @ts-check
// The page of the local server.

import { ServerEngine } from './engine/server-engine.mjs';
import { start } from './main.mjs';

start(new ServerEngine());
