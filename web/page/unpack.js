// Unpacks the engine, two megabytes of LZMA: browsers unpack gzip themselves, and that takes a third more room. The
// format is that of `xz --format=lzma`: 13 bytes of head, of which the first tells the parameters, then what a range
// coder has written with probabilities of 11 bits that follow what they see.

const half = 1024;
const probabilities = (number) => new Uint16Array(number).fill(half);
/// Of lengths: two choices, then three trees, of which two are there for each position.
const lengths = () => ({ choice: probabilities(2), low: probabilities(16 << 3), middle: probabilities(16 << 3), high: probabilities(256) });

class Decoder {
    range = 0xFFFFFFFF;
    code = 0;

    constructor(bytes) {
        this.bytes = bytes;
        // The first byte is none of the code's.
        this.at = 14;
        for (let byte = 0; byte < 4; ++byte) this.code = ((this.code << 8) | bytes[this.at++]) >>> 0;
    }

    refill() {
        if (this.range >= 0x1000000) return;
        this.range = (this.range << 8) >>> 0;
        this.code = ((this.code << 8) | this.bytes[this.at++]) >>> 0;
    }

    bit(table, place) {
        const seen = table[place];
        const bound = (this.range >>> 11) * seen;
        const bit = this.code < bound ? 0 : 1;
        if (bit === 0) {
            this.range = bound;
            table[place] = seen + ((2048 - seen) >> 5);
        } else {
            this.range -= bound;
            this.code -= bound;
            table[place] = seen - (seen >> 5);
        }
        this.refill();
        return bit;
    }

    /// Bits without probabilities.
    plain(number) {
        let value = 0;
        for (let bit = 0; bit < number; ++bit) {
            this.range >>>= 1;
            const isSet = this.code >= this.range ? 1 : 0;
            this.code -= isSet * this.range;
            value = (value << 1) | isSet;
            this.refill();
        }
        return value;
    }

    tree(table, base, number) {
        let node = 1;
        for (let bit = 0; bit < number; ++bit) node = (node << 1) | this.bit(table, base + node);
        return node - (1 << number);
    }

    /// The lowest bit first.
    reverseTree(table, base, number) {
        let node = 1;
        let value = 0;
        for (let at = 0; at < number; ++at) {
            const bit = this.bit(table, base + node);
            node = (node << 1) | bit;
            value |= bit << at;
        }
        return value;
    }

    length(table, position) {
        if (this.bit(table.choice, 0) === 0) return 2 + this.tree(table.low, position << 3, 3);
        if (this.bit(table.choice, 1) === 0) return 10 + this.tree(table.middle, position << 3, 3);
        return 18 + this.tree(table.high, 0, 8);
    }
}

/// The `size` bytes that are packed.
export const unpack = (bytes, size) => {
    const literalContext = bytes[0] % 9;
    const literalMask = (1 << Math.floor(bytes[0] / 9) % 5) - 1;
    const positionMask = (1 << Math.floor(bytes[0] / 45)) - 1;
    const decoder = new Decoder(bytes);
    const literals = probabilities(0x300 << (literalContext + Math.floor(bytes[0] / 9) % 5));
    const [isMatch, isLong] = [probabilities(12 << 4), probabilities(12 << 4)];
    const [isRepeated, isOther, isThird, isFourth] = [probabilities(12), probabilities(12), probabilities(12), probabilities(12)];
    const [slots, near, aligned] = [probabilities(4 << 6), probabilities(128), probabilities(16)];
    const [newLengths, repeatedLengths] = [lengths(), lengths()];
    const unpacked = new Uint8Array(size);
    // The distances that were used last, and what kinds of things came last.
    let [first, second, third, fourth] = [0, 0, 0, 0];
    let state = 0;
    let at = 0;

    const literal = () => {
        const before = at > 0 ? unpacked[at - 1] : 0;
        const base = 0x300 * (((at & literalMask) << literalContext) + (before >> (8 - literalContext)));
        let symbol = 1;
        if (state >= 7) {
            let guess = unpacked[at - first - 1];
            for (let isSame = true; isSame && symbol < 0x100; guess <<= 1) {
                const guessed = (guess >> 7) & 1;
                const bit = decoder.bit(literals, base + ((1 + guessed) << 8) + symbol);
                symbol = (symbol << 1) | bit;
                isSame = bit === guessed;
            }
        }
        while (symbol < 0x100) symbol = (symbol << 1) | decoder.bit(literals, base + symbol);
        unpacked[at++] = symbol;
        state = state < 4 ? 0 : state < 10 ? state - 3 : state - 6;
    };

    const distance = (length) => {
        const slot = decoder.tree(slots, Math.min(length - 2, 3) << 6, 6);
        if (slot < 4) return slot;
        const bits = (slot >> 1) - 1;
        const begin = (2 | (slot & 1)) << bits;
        return slot < 14 ? begin + decoder.reverseTree(near, begin - slot, bits)
            : begin + (decoder.plain(bits - 4) << 4) + decoder.reverseTree(aligned, 0, 4);
    };

    /// Takes one of the last distances to the front.
    const repeat = () => {
        let chosen = second;
        if (decoder.bit(isThird, state) === 1) {
            chosen = third;
            if (decoder.bit(isFourth, state) === 1) [chosen, fourth] = [fourth, third];
            third = second;
        }
        [first, second] = [chosen, first];
    };

    while (at < size) {
        const position = at & positionMask;
        if (decoder.bit(isMatch, (state << 4) + position) === 0) {
            literal();
            continue;
        }
        let length = 1;
        if (decoder.bit(isRepeated, state) === 0) {
            [second, third, fourth] = [first, second, third];
            length = decoder.length(newLengths, position);
            first = distance(length);
            state = state < 7 ? 7 : 10;
        } else {
            const isFirst = decoder.bit(isOther, state) === 0;
            if (isFirst && decoder.bit(isLong, (state << 4) + position) === 0) {
                state = state < 7 ? 9 : 11;
            } else {
                if (!isFirst) repeat();
                length = decoder.length(repeatedLengths, position);
                state = state < 7 ? 8 : 11;
            }
        }
        for (let copied = 0; copied < length; ++copied, ++at) unpacked[at] = unpacked[at - first - 1];
    }
    return unpacked;
};
