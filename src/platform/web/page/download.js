// The browser's own download.

const patience = 60000;  // milliseconds until what was downloaded may be forgotten

// Letters that no file system takes become "_".
export const safeName = name =>
    name.replace(/[\\/:*?"<>|\u0000-\u001f\u007f]/g, '_').replace(/^\.+$/, '_') || '_';

export function download(name, content, type = 'application/octet-stream') {
  const url = URL.createObjectURL(new Blob([content], {type}));
  const link = document.createElement('a');
  link.href = url;
  link.download = safeName(name);
  document.body.append(link);
  link.click();
  link.remove();
  setTimeout(() => URL.revokeObjectURL(url), patience);
}
