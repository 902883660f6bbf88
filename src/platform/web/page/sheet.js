// A canvas that has as many pixels as the screen gives it, at every zoom.

const widest = 16_384;  // more no browser paints on

export class Sheet {
  #canvas;
  #paint;
  #asked = 0;
  #observer;

  // `paint(context, width, height, pixels)` paints the whole of it: its size in pixels of the device, and how many
  // of them make one of the layout.
  constructor(canvas, paint) {
    this.#canvas = canvas;
    this.#paint = paint;
    this.#observer = new ResizeObserver(([entry]) => this.#fit(entry));
    try {
      this.#observer.observe(canvas, {box: 'device-pixel-content-box'});
    } catch {
      this.#observer.observe(canvas);  // elsewhere the size is reckoned, and may be a pixel off
    }
  }

  // Soon, and once however often it is asked.
  repaint() {
    if (this.#asked !== 0) return;
    this.#asked = requestAnimationFrame(() => this.paintNow());
  }

  paintNow() {
    cancelAnimationFrame(this.#asked);
    this.#asked = 0;
    const {width, height} = this.#canvas;
    const across = this.#canvas.getBoundingClientRect().width;
    if (width === 0 || height === 0 || across === 0) return;
    const context = this.#canvas.getContext('2d');
    context.setTransform(1, 0, 0, 1, 0, 0);
    context.clearRect(0, 0, width, height);
    this.#paint(context, width, height, width / across);
  }

  // A new size empties the canvas, so it is painted before anything is seen of that.
  #fit(entry) {
    const exact = entry.devicePixelContentBoxSize?.[0];
    const ratio = window.devicePixelRatio;
    const width = exact ? exact.inlineSize : Math.round(entry.contentRect.width * ratio);
    const height = exact ? exact.blockSize : Math.round(entry.contentRect.height * ratio);
    if (width === this.#canvas.width && height === this.#canvas.height) return;
    if (Math.max(width, height) > widest) return;
    this.#canvas.width = width;
    this.#canvas.height = height;
    this.paintNow();
  }
}
