// Lines that more than one phase of the pass logs.

#ifndef ZARVEN_ALGORITHM_TEXTOS_H
#define ZARVEN_ALGORITHM_TEXTOS_H

namespace zarven::textos {

inline constexpr char NO_SE_PUEDEN_ANADIR[] =
    " Por más que se quiera por este metodo no se pueden añadir más servicios";

} // namespace zarven::textos

#endif
