// What is sent to the program while it may still be at work on what was sent before. Messages wait there in line:
// keys that repeat, turns of the wheel and places of the mouse would go on long after the user has let go.

const waitsAtMost = 3000;  // ms: not everything that is sent makes the program stand anew

export class DeedGate {
  #send;
  #now;
  #putAt = null;        // when what the program is at was sent
  #wasStep = false;     // what was sent last may move nothing but the cursor
  #years = 0;           // turned, and not yet sent
  #mouse = null;        // where it is, and not yet sent
  #mouseWaits = false;  // the place that was sent last is not answered yet

  constructor(send, now = () => performance.now()) {
    this.#send = send;
    this.#now = now;
  }

  put(message) {
    if (message.do === 'mouse') return this.#move(message);
    if (message.do === 'scroll') return this.#scroll(message.years);
    if (message.repeated && this.#isUnderWay()) return undefined;
    return this.#go(message);
  }

  // The program stands anew.
  stood() {
    this.#putAt = null;
    this.#goOn();
  }

  // It told the status line alone: of a place of the mouse, or of the cursor.
  told() {
    this.#mouseWaits = false;
    if (this.#wasStep) this.#putAt = null;
    this.#goOn();
  }

  #isUnderWay() {
    return this.#putAt !== null && this.#now() - this.#putAt < waitsAtMost;
  }

  #go(message) {
    this.#putAt = this.#now();
    this.#wasStep = message.do === 'key' && message.step !== '';
    this.#send(message);
  }

  #scroll(years) {
    this.#years += years;
    if (!this.#isUnderWay()) this.#goOn();
  }

  #move(message) {
    this.#mouse = message;
    if (!this.#mouseWaits) this.#goOn();
  }

  #goOn() {
    if (this.#mouse && !this.#mouseWaits) {
      const message = this.#mouse;
      this.#mouse = null;
      this.#mouseWaits = true;
      this.#send(message);
    }
    if (this.#years === 0 || this.#isUnderWay()) return;
    const years = this.#years;
    this.#years = 0;
    this.#go({do: 'scroll', years});
  }
}
