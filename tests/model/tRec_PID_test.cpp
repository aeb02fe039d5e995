#include "tRec_PID.h"

#include <tuple>

#include <gtest/gtest.h>

#include "support/Registro.h"

namespace tRec_PID_test {

using namespace zarven;

TEST(tRec_PID, SettersFillWhatTheConstructorFills) {
    tRec_PID p;
    p.conIdPSG(1).conReservado1(2).conReservado2(3).conReservado3(4).conAudioCode("spa").conOrden(5).conSID(
        6);
    const tRec_PID q(1, 2, 3, 4, "spa", 5, 6);
    const auto campos = [](const tRec_PID& pid) {
        return std::tie(pid.idPSG, pid.Reservado1, pid.Reservado2, pid.Reservado3, pid.AudioCode, pid.Orden,
                        pid.SID);
    };
    EXPECT_EQ(campos(p), campos(q));
}

TEST(tRec_PID, StartsEmpty) {
    const tRec_PID pid;
    EXPECT_EQ(pid.idPSG, 0);
    EXPECT_EQ(pid.Reservado1, 0);
    EXPECT_EQ(pid.Reservado2, 0);
    EXPECT_EQ(pid.Reservado3, 0);
    EXPECT_TRUE(pid.AudioCode.empty());
    EXPECT_EQ(pid.Orden, 0);
    EXPECT_EQ(pid.SID, 0);
    EXPECT_EQ(pid.pServicio, nullptr);
}

TEST(tRec_PID, TakesItsFieldsInOrder) {
    const tRec_PID pid(-7, 1, 2, 3, "spa", 4, 5);
    EXPECT_EQ(pid.idPSG, -7);
    EXPECT_EQ(pid.Reservado1, 1);
    EXPECT_EQ(pid.Reservado2, 2);
    EXPECT_EQ(pid.Reservado3, 3);
    EXPECT_EQ(pid.AudioCode, "spa");
    EXPECT_EQ(pid.Orden, 4);
    EXPECT_EQ(pid.SID, 5);
    EXPECT_EQ(pid.pServicio, nullptr);
}

TEST(tRec_PID, PrintsItsBlock) {
    registro::vaciar();
    tRec_PID(16, 0, 0, 0, "spa", 2, 1).Print_PID(3);
    const std::vector<std::string> esperado = {
        "7 || ||  % %                                                                                           % % || ||",
        "7 || ||  % %                                          [ -3- ]                                          % % || ||",
        "7 || ||  % %                             idPSG: 16  --> Orden:2 --> AudioCode: spa                     % % || ||",
        "7 || ||  % %                                                                                           % % || ||",
    };
    EXPECT_EQ(registro::hechos(), esperado);
}

} // namespace tRec_PID_test
