#include "tRec_Servicio.h"

#include <cstdlib>
#include <new>
#include <tuple>
#include <type_traits>

#include <gtest/gtest.h>

#include "support/Registro.h"

using namespace zarven;

namespace {

// Deallocations of this one address are counted, to see who destroys a PID and when.
const void* vigilado = nullptr;
int liberado = 0;

void liberar(void* p) {
    if (p != nullptr && p == vigilado)
        ++liberado;
    std::free(p);
}

std::unique_ptr<tRec_PID> pid(long idPSG, const std::string& audio = "") {
    return std::make_unique<tRec_PID>(idPSG, 0, 0, 0, audio, 1, 1);
}

std::unique_ptr<tRec_PID> pidVigilado(long idPSG) {
    auto nuevo = pid(idPSG);
    vigilado = nuevo.get();
    liberado = 0;
    return nuevo;
}

auto campos(const tRec_Servicio& s) {
    return std::tie(s.idService, s.OSID, s.SID, s.LCN, s.Reservado1, s.SimulcastLCN, s.Descifrar,
                    s.number_PIDs_CA, s.number_PIDs_CA_Max, s.peakBitRate, s.videoPeakBitRate, s.Tipo,
                    s.VideoFormatE, s.Reservado2, s.NombreEntrada, s.NombreSalida, s.NombreForzado,
                    s.Transcoding, s.Reservado3, s.SatId, s.ONID, s.TSID, s.Parent_SID);
}

tRec_Servicio ordinario(unsigned long video, unsigned long total) {
    return tRec_Servicio(1, 2, 3, 4, 5, 6, 7, 8, video, total, 11, 12, 13, "entrada", "salida", 16, 17, 18,
                         19, 20, 21);
}

} // namespace

void* operator new(std::size_t cuanto) {
    void* p = std::malloc(cuanto);
    if (p == nullptr)
        throw std::bad_alloc();
    return p;
}
void operator delete(void* p) noexcept {
    liberar(p);
}
void operator delete(void* p, std::size_t) noexcept {
    liberar(p);
}

static_assert(std::is_same_v<tMapaServicios, std::multimap<long, std::shared_ptr<tRec_Servicio>>>);
static_assert(std::is_same_v<decltype(tRec_Servicio::MapaPIDs), std::map<long, std::unique_ptr<tRec_PID>>>);
static_assert(std::is_same_v<decltype(tRec_Servicio::idService), long>);
static_assert(std::is_same_v<decltype(tRec_Servicio::peakBitRate), std::uint32_t>);
static_assert(std::is_same_v<decltype(tRec_Servicio::videoPeakBitRate), std::uint32_t>);

TEST(tRec_Servicio, StartsEmpty) {
    const tRec_Servicio s;
    EXPECT_EQ(s.idService, 0);
    EXPECT_EQ(s.OSID, 0);
    EXPECT_EQ(s.SID, 0);
    EXPECT_EQ(s.LCN, 0);
    EXPECT_EQ(s.Reservado1, 0);
    EXPECT_EQ(s.SimulcastLCN, 0);
    EXPECT_EQ(s.Descifrar, 0);
    EXPECT_EQ(s.number_PIDs_CA, 0);
    EXPECT_EQ(s.number_PIDs_CA_Max, 0);
    EXPECT_EQ(s.peakBitRate, 0u);
    EXPECT_EQ(s.videoPeakBitRate, 0u);
    EXPECT_EQ(s.Tipo, 0);
    EXPECT_EQ(s.VideoFormatE, 0);
    EXPECT_EQ(s.Reservado2, 0);
    EXPECT_EQ(s.NombreEntrada, "");
    EXPECT_EQ(s.NombreSalida, "");
    EXPECT_EQ(s.NombreForzado, 0);
    EXPECT_EQ(s.Transcoding, 0);
    EXPECT_EQ(s.Reservado3, 0);
    EXPECT_EQ(s.SatId, 0);
    EXPECT_EQ(s.ONID, 0);
    EXPECT_EQ(s.TSID, 0);
    EXPECT_EQ(s.Parent_SID, 0);
    EXPECT_EQ(s.pEntrada, nullptr);
    EXPECT_EQ(s.pSalida, nullptr);
    EXPECT_TRUE(s.MapaPIDs.empty());
}

TEST(tRec_Servicio, OrdinaryServiceTakesItsFieldsInOrder) {
    const tRec_Servicio s = ordinario(9, 10);
    EXPECT_EQ(s.OSID, 1);
    EXPECT_EQ(s.SID, 2);
    EXPECT_EQ(s.idService, 3);
    EXPECT_EQ(s.LCN, 3);
    EXPECT_EQ(s.Reservado1, 4);
    EXPECT_EQ(s.SimulcastLCN, 5);
    EXPECT_EQ(s.Descifrar, 6);
    EXPECT_EQ(s.number_PIDs_CA, 7);
    EXPECT_EQ(s.number_PIDs_CA_Max, 8);
    EXPECT_EQ(s.videoPeakBitRate, 9u) << "the video's bitrate comes first";
    EXPECT_EQ(s.peakBitRate, 10u);
    EXPECT_EQ(s.Tipo, 11);
    EXPECT_EQ(s.VideoFormatE, 12);
    EXPECT_EQ(s.Reservado2, 13);
    EXPECT_EQ(s.NombreEntrada, "entrada");
    EXPECT_EQ(s.NombreSalida, "salida");
    EXPECT_EQ(s.NombreForzado, 16);
    EXPECT_EQ(s.Transcoding, 17);
    EXPECT_EQ(s.ONID, 18);
    EXPECT_EQ(s.TSID, 19);
    EXPECT_EQ(s.Reservado3, 20);
    EXPECT_EQ(s.SatId, 21);
    EXPECT_EQ(s.Parent_SID, 0);
    EXPECT_EQ(s.pEntrada, nullptr);
    EXPECT_EQ(s.pSalida, nullptr);
    EXPECT_TRUE(s.MapaPIDs.empty());
}

TEST(tRec_Servicio, CloneTakesItsFieldsInOrder) {
    const tRec_Servicio s(1, 2, 3, 4, 5, 6, 7, 8, 9, "entrada", "salida", 12, 13, 14, 15, 16, 17, 18, 19);
    EXPECT_EQ(s.OSID, 1);
    EXPECT_EQ(s.SID, 2);
    EXPECT_EQ(s.idService, 3);
    EXPECT_EQ(s.LCN, 3);
    EXPECT_EQ(s.Reservado1, 4);
    EXPECT_EQ(s.SimulcastLCN, 5);
    EXPECT_EQ(s.Descifrar, 6);
    EXPECT_EQ(s.Tipo, 7);
    EXPECT_EQ(s.VideoFormatE, 8);
    EXPECT_EQ(s.Reservado2, 9);
    EXPECT_EQ(s.NombreEntrada, "entrada");
    EXPECT_EQ(s.NombreSalida, "salida");
    EXPECT_EQ(s.videoPeakBitRate, 12u);
    EXPECT_EQ(s.NombreForzado, 13);
    EXPECT_EQ(s.Transcoding, 14);
    EXPECT_EQ(s.ONID, 15);
    EXPECT_EQ(s.TSID, 16);
    EXPECT_EQ(s.Reservado3, 17);
    EXPECT_EQ(s.Parent_SID, 18);
    EXPECT_EQ(s.SatId, 19);
    EXPECT_EQ(s.pEntrada, nullptr);
    EXPECT_EQ(s.pSalida, nullptr);
    EXPECT_TRUE(s.MapaPIDs.empty());
}

TEST(tRec_Servicio, SettersFillWhatTheConstructorsFill) {
    tRec_Servicio s;
    s.conOSID(1)
        .conSID(2)
        .conLCN(3)
        .conReservado1(4)
        .conSimulcastLCN(5)
        .conDescifrar(6)
        .conPIDsCA(7)
        .conPIDsCAMax(8);
    s.conBitRateVideo(9).conBitRate(10).conTipo(11).conVideoFormatE(12).conReservado2(13).conNombreEntrada(
        "entrada");
    s.conNombreSalida("salida").conNombreForzado(16).conTranscoding(17).conONID(18).conTSID(19).conReservado3(
        20);
    s.conSatId(21);
    EXPECT_EQ(campos(s), campos(ordinario(9, 10)));

    s.conPIDsCA(0).conPIDsCAMax(0).conBitRate(0).conParentSID(22);
    EXPECT_EQ(campos(s), campos(tRec_Servicio(1, 2, 3, 4, 5, 6, 11, 12, 13, "entrada", "salida", 9, 16, 17,
                                              18, 19, 20, 22, 21)));

    s.conIdService(-70000);
    EXPECT_EQ(s.idService, -70000);
    EXPECT_EQ(s.LCN, 3);
}

TEST(tRec_Servicio, CloneCostsNeitherPIDsNorBitrate) {
    const tRec_Servicio s(1, 2, 3, 4, 5, 6, 7, 8, 9, "entrada", "salida", 12, 13, 14, 15, 16, 17, 18, 19);
    EXPECT_EQ(s.number_PIDs_CA, 0);
    EXPECT_EQ(s.number_PIDs_CA_Max, 0);
    EXPECT_EQ(s.peakBitRate, 0u);
}

TEST(tRec_Servicio, KeyAndChannelNumberPartAfterConstruction) {
    tRec_Servicio s = ordinario(9, 10);
    s.idService = 30;
    EXPECT_EQ(s.LCN, 3);
    s.LCN = 40;
    EXPECT_EQ(s.idService, 30);
}

TEST(tRec_Servicio, NarrowsItsBitratesTo32Bits) {
    constexpr unsigned long mayor32 = 0xFFFFFFFFul;
    const tRec_Servicio s = ordinario(mayor32, mayor32 - 1);
    EXPECT_EQ(s.videoPeakBitRate, 4294967295u);
    EXPECT_EQ(s.peakBitRate, 4294967294u);
    // Where long has 64 bits the excess is cut off; where it has 32 the arguments wrap by themselves.
    const tRec_Servicio exceso = ordinario(mayor32 + 6, mayor32 + 8);
    EXPECT_EQ(exceso.videoPeakBitRate, 5u);
    EXPECT_EQ(exceso.peakBitRate, 7u);
    const tRec_Servicio clon(1, 2, 3, 4, 5, 6, 7, 8, 9, "", "", mayor32 + 6, 13, 14, 15, 16, 17, 18, 19);
    EXPECT_EQ(clon.videoPeakBitRate, 5u);
}

TEST(tRec_Servicio, OwnsThePIDsItIsGiven) {
    tRec_Servicio s;
    EXPECT_EQ(s.addPID_AlServicio(pid(16, "spa")), 1);
    EXPECT_EQ(s.addPID_AlServicio(pid(-3, "eng")), 1);
    ASSERT_EQ(s.MapaPIDs.size(), 2u);
    EXPECT_EQ(s.MapaPIDs.begin()->first, -3);
    EXPECT_EQ(s.MapaPIDs.at(-3)->AudioCode, "eng");
    EXPECT_EQ(s.MapaPIDs.at(16)->AudioCode, "spa");
    EXPECT_EQ(s.MapaPIDs.at(16)->pServicio, &s);
    EXPECT_EQ(s.MapaPIDs.at(-3)->pServicio, &s);
}

TEST(tRec_Servicio, LogsItsServiceIdAndNotItsKeyForEachPID) {
    tRec_Servicio s = ordinario(9, 10); // SID 2, key 3
    registro::vaciar();
    s.addPID_AlServicio(pid(16));
    EXPECT_EQ(registro::hechos(), std::vector<std::string>{"7 Añadimos PID al servicio 2"});
}

TEST(tRec_Servicio, KeepsTheFirstOfTwoPIDsWithOneKey) {
    tRec_Servicio s = ordinario(9, 10);
    registro::vaciar();
    EXPECT_EQ(s.addPID_AlServicio(pid(16, "spa")), 1);
    EXPECT_EQ(s.addPID_AlServicio(pid(16, "eng")), 1);
    ASSERT_EQ(s.MapaPIDs.size(), 1u);
    EXPECT_EQ(s.MapaPIDs.at(16)->AudioCode, "spa");
    EXPECT_EQ(registro::cuantas("Añadimos PID al servicio 2"), 2u);
}

TEST(tRec_Servicio, DestroysTheSecondOfTwoPIDsWithOneKeyAtOnce) {
    tRec_Servicio s;
    s.addPID_AlServicio(pid(16));
    s.addPID_AlServicio(pidVigilado(16));
    EXPECT_EQ(liberado, 1);
    vigilado = nullptr;
}

TEST(tRec_Servicio, DestroysItsPIDsWithItsLastHolder) {
    auto s = std::make_shared<tRec_Servicio>();
    auto otro = s;
    s->addPID_AlServicio(pidVigilado(16));
    s.reset();
    EXPECT_EQ(liberado, 0);
    otro.reset();
    EXPECT_EQ(liberado, 1);
    vigilado = nullptr;
}

TEST(tRec_Servicio, IgnoresANullPID) {
    tRec_Servicio s;
    registro::vaciar();
    EXPECT_EQ(s.addPID_AlServicio(nullptr), 0);
    EXPECT_TRUE(s.MapaPIDs.empty());
    EXPECT_TRUE(registro::hechos().empty());
}
