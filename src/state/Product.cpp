#include "state/Product.h"

namespace orv {

Program TheProgram() {
  const QString plain = QStringLiteral("Liberation Sans");
  return {.name = QStringLiteral("Varnholt Card Set Creator"),
          .settings_name = QStringLiteral("ORV2"),
          .package_name = QStringLiteral("varnholt-card-set-creator"),
          .usual_face = QStringLiteral("Small Fonts"),
          .stand_ins = {{QStringLiteral("Small Fonts"), plain},
                        {QStringLiteral("Arial"), plain},
                        {QStringLiteral("CasablancaAntique"), QStringLiteral("Essays1743")}}};
}

}  // namespace orv
