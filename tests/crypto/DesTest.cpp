#include "crypto/Des.h"

#include "crypto/DesAnswers.h"

#include <gtest/gtest.h>

#include <QtEndian>

#include <vector>

using velm::detail::Des;

namespace {

quint64 crypted(quint64 key, quint64 block, bool encrypts = true)
{
    const quint64 keyBytes = qToBigEndian(key);
    quint64 bytes = qToBigEndian(block);
    Des des;
    des.setKey(reinterpret_cast<const char*>(&keyBytes));
    auto* data = reinterpret_cast<char*>(&bytes);
    encrypts ? des.encrypt(data, data, 1) : des.decrypt(data, data, 1);
    return qFromBigEndian(bytes);
}

void expectAnswer(quint64 key, quint64 plain, quint64 cipher)
{
    EXPECT_EQ(crypted(key, plain), cipher) << std::hex << key << ' ' << plain;
    EXPECT_EQ(crypted(key, cipher, false), plain) << std::hex << key << ' ' << cipher;
}

}  // namespace

TEST(Des, GivesThePublishedAnswers)
{
    constexpr quint64 kParity = 0x0101010101010101;
    for (size_t bit = 0; bit < desanswers::kVariablePlaintext.size(); ++bit)
        expectAnswer(kParity, 1ULL << (63 - bit), desanswers::kVariablePlaintext[bit]);
    for (size_t bit = 0; bit < desanswers::kVariableKey.size(); ++bit)
        expectAnswer(kParity | 1ULL << (63 - bit / 7 * 8 - bit % 7), 0,
                     desanswers::kVariableKey[bit]);
    for (const auto& answer : desanswers::kPermutationAndSubstitution)
        expectAnswer(answer.key, answer.plain, answer.cipher);
}

// R. L. Rivest, Testing implementations of DES, 1985: a chain that meets every table.
TEST(Des, KeepsRivestsChain)
{
    quint64 value = 0x9474B8E8C73BCA7D;
    for (int i = 0; i < 16; ++i)
        value = crypted(value, value, i % 2 == 0);
    EXPECT_EQ(value, 0x1B1A2DDB4C642438);
}

TEST(Des, TakesManyBlocksAndEachForItself)
{
    for (const size_t blocks : {0, 1, 2, 3, 8, 9}) {
        std::vector<quint64> in(blocks), out(blocks + 1, 7);
        for (size_t i = 0; i < blocks; ++i)
            in[i] = qToBigEndian(1ULL << (63 - i));
        Des des;
        des.setKey("\1\1\1\1\1\1\1\1");
        des.encrypt(reinterpret_cast<char*>(in.data()), reinterpret_cast<char*>(out.data()),
                    blocks);
        for (size_t i = 0; i < blocks; ++i)
            EXPECT_EQ(qFromBigEndian(out[i]), desanswers::kVariablePlaintext[i]) << i;
        EXPECT_EQ(out[blocks], 7) << "nothing is written behind";
    }
}
