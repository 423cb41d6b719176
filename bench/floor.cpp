// The floor that a conversion is measured against: reads the log twice in large blocks and writes as many
// bytes as the conversion's outputs hold. No converter can do less.
//
//     orbconv_floor LOG OUTPUT BYTES
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

constexpr std::size_t blockBytes = std::size_t{256} * 1024;

bool readThrough(const char* name, std::vector<char>& block) {
    std::FILE* const file = std::fopen(name, "rb");
    if (file == nullptr) {
        return false;
    }
    std::setvbuf(file, nullptr, _IONBF, 0);
    while (std::fread(block.data(), 1, block.size(), file) > 0) {
    }
    return std::fclose(file) == 0;
}

bool writeBytes(const char* name, std::vector<char>& block, unsigned long long bytes) {
    std::FILE* const file = std::fopen(name, "wb");
    if (file == nullptr) {
        return false;
    }
    std::setvbuf(file, nullptr, _IONBF, 0);
    bool written = true;
    while (bytes > 0 && written) {
        const auto piece = static_cast<std::size_t>(std::min<unsigned long long>(bytes, block.size()));
        written = std::fwrite(block.data(), 1, piece, file) == piece;
        bytes -= piece;
    }
    return std::fclose(file) == 0 && written;
}

}  // namespace

int main(int argc, char* argv[]) {
    if (argc != 4) {
        std::fputs("usage: orbconv_floor LOG OUTPUT BYTES\n", stderr);
        return 2;
    }
    std::vector<char> block(blockBytes, ' ');
    const unsigned long long bytes = std::strtoull(argv[3], nullptr, 10);
    const bool done =
        readThrough(argv[1], block) && readThrough(argv[1], block) && writeBytes(argv[2], block, bytes);
    return done ? 0 : 1;
}
