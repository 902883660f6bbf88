// Many files in one: a zip archive.
import JSZip from 'jszip';

import {safeName} from './download.js';

// A zip tells times in whole years from 1980 on.
const earliest = Date.UTC(1980, 0, 2);

// `files` have path, bytes and time (milliseconds). The archive opens into a folder of this name.
export async function zipOf(folder, files) {
  const zip = new JSZip();
  for (const {path, bytes, time} of files) {
    zip.file(
        `${safeName(folder)}/${path}`, bytes,
        {date: new Date(Math.max(time || 0, earliest)), createFolders: false});
  }
  return zip.generateAsync({type: 'uint8array', compression: 'DEFLATE', platform: 'UNIX'});
}
