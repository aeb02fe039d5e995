// What the engine asks of JavaScript: a line of progress, and the tables of Unicode (unicode/unicode.cpp). In the
// JavaScript that emscripten 3.1.6 reads, which is that of 2018.

mergeInto(LibraryManager.library, {
    recalculo_tell_progress: function (text, size) {
        if (Module["progress"]) Module["progress"](new TextDecoder().decode(HEAPU8.subarray(text, text + size)));
    },

    recalculo_char_width: function (code) {
        const character = String.fromCodePoint(code);
        if (/\p{M}|\p{Cf}|\p{Cc}|\p{Zl}|\p{Zp}/u.test(character)) return 0;
        const wide = /[\p{Emoji_Presentation}\u1100-\u115F\u2E80-\u303E\u3041-\uA4CF\uA960-\uA97C\uAC00-\uD7A3\uF900-\uFAFF\uFE30-\uFE6B\uFF01-\uFF60\uFFE0-\uFFE6\u{20000}-\u{3FFFD}]/u;
        return wide.test(character) ? 2 : 1;
    },

    recalculo_decompose: function (text, size, parts, most) {
        const decoded = new TextDecoder("utf-8", { ignoreBOM: true }).decode(HEAPU8.subarray(text, text + size));
        const codes = [...decoded.normalize("NFKD").replace(/\p{M}/gu, "")].map((part) => part.codePointAt(0));
        HEAP32.set(codes.slice(0, most), parts >> 2);
        return codes.length;
    },

    recalculo_is_one_cluster: function (code, next) {
        if (!Module["segmenter"]) Module["segmenter"] = new Intl.Segmenter();
        // A joiner joins pictures alone, and stands behind one.
        const before = code === 0x200D ? "\u{1F469}" : "";
        return [...Module["segmenter"].segment(before + String.fromCodePoint(code, next))].length === 1 ? 1 : 0;
    },
});
