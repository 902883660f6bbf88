// In place of the streams of Node, which the library for zip files asks for and does without.
module.exports = {};
