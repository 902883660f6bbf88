// What is sent to the program while it may still be at work on what was sent before. Messages wait there in line:
// keys that repeat, turns of the wheel and places of the mouse would go on long after the user has let go.
//
// Who types ahead may ask for what can be done only when the program stands where the keys before lead to: such deeds
// are held until then, and all that is sent after them stays behind them.

const waitsAtMost = 3000;  // ms: not everything that is sent makes the program stand anew
const holdsAtMost = 1000;

export class DeedGate {
  #send;
  #now;
  #later;
  #held = [];           // deeds that wait for the program to stand anew, and what came after them
  #isReleasing = false;
  #unanswered = 0;      // sent, and the program has not stood anew since as often
  #putAt = null;        // when what the program is at was sent
  #wasStep = false;     // what was sent last may move nothing but the cursor
  #years = 0;           // turned, and not yet sent
  #mouse = null;        // where it is, and not yet sent
  #mouseWaits = false;  // the place that was sent last is not answered yet

  constructor(send, now = () => performance.now(), later = (work, ms) => setTimeout(work, ms)) {
    this.#send = send;
    this.#now = now;
    this.#later = later;
  }

  // The program may yet come to stand elsewhere, by what was sent already.
  get mayTurn() {
    return this.#unanswered > 0;
  }

  // Calls it when the program stands anew, or when it does not for long.
  hold(deed) {
    if (this.#held.length === 0 && !this.#isReleasing) this.#later(() => this.#giveUp(), holdsAtMost);
    this.#held.push(deed);
  }

  #giveUp() {
    if (this.#held.length === 0) return;
    this.#unanswered = 0;
    this.#release();
  }

  put(message) {
    if (message.do === 'mouse') return this.#move(message);
    if (message.do === 'scroll') return this.#scroll(message.years);
    if (message.repeated && this.#isUnderWay()) return undefined;
    if (this.#held.length > 0) return this.hold(() => this.put(message));
    return this.#go(message);
  }

  // The program stands anew.
  stood() {
    this.#putAt = null;
    this.#unanswered = Math.max(0, this.#unanswered - 1);
    this.#release();
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

  // What is not to be done yet is held again, with all that came after it.
  #release() {
    this.#isReleasing = true;
    for (const deed of this.#held.splice(0)) deed();
    this.#isReleasing = false;
  }

  #go(message) {
    this.#putAt = this.#now();
    this.#wasStep = message.do === 'key' && message.step !== '';
    if (!this.#wasStep) this.#unanswered += 1;
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
