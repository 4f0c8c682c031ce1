#include "core/pdb/Pictures.h"

#include "core/model/FieldType.h"
#include "core/pdb/ByteReader.h"
#include "core/pdb/Layout.h"
#include "core/platform/OwnTexts.h"
#include "core/platform/Paths.h"

#include <charconv>
#include <string>

namespace tallybook::pdb {

namespace {

constexpr std::string_view kTag = "Save_DB : buildRecord20";
constexpr std::size_t kDigits = 10;

platform::Error fileError(std::string text) {
    return {platform::ErrorKind::File, std::string(kTag), std::move(text)};
}

} // namespace

platform::Result<platform::ByteSpan> PictureCopy::cellBody(std::int32_t position) {
    if (!m_bytes) {
        auto read = m_files.read(m_path);
        if (!read.ok())
            return read.error();
        m_bytes = std::move(read).value();
    }
    // A place beyond 2^31 is kept as a negative number.
    const std::size_t start = static_cast<std::uint32_t>(position) - std::size_t{1};
    const auto missing = [&] {
        return fileError(platform::texts::noPictureThere(platform::shownPath(m_path), std::int64_t{position} - 1));
    };
    if (position == 0 || start >= m_bytes->size())
        return missing();
    ByteReader in(*m_bytes, start, m_bytes->size());
    const bool isPicture = in.getByte() == static_cast<std::uint8_t>(model::FieldType::Image);
    in.skipBytes(1);
    const std::size_t body = in.position();
    in.skipBytes(std::size_t{in.getWord()} + 1);
    if (!isPicture || !in.ok())
        return missing();
    return platform::ByteSpan(*m_bytes).subspan(body, in.position() - body);
}

std::string pictureFileName(std::int32_t number) {
    const std::string digits = std::to_string(static_cast<std::uint32_t>(number));
    return "rlw_" + std::string(kDigits - digits.size(), '0') + digits + ".rle";
}

platform::Result<platform::Bytes> readNewPicture(platform::Files& files, const std::filesystem::path& path) {
    auto read = files.read(path);
    if (read.ok() && read.value().size() > layout::kMostPictureBytes)
        return fileError(platform::texts::pictureTooLarge(platform::shownPath(path), layout::kMostPictureBytes));
    return read;
}

} // namespace tallybook::pdb
