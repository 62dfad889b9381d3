#include "state/Product.h"

#include "builtin/Faces.h"

namespace orv {

Program TheProgram() {
  return {.name = QStringLiteral("Varnholt Card Set Creator"),
          .settings_name = QStringLiteral("ORV2"),
          .package_name = QStringLiteral("varnholt-card-set-creator"),
          .desktop_id = QStringLiteral("org.varnholt.card_set_creator"),
          .version = QStringLiteral("%1.%2").arg(kMajor).arg(kMinor),
          .usual_face = QStringLiteral("Small Fonts"),
          .faces = builtin::FaceFiles(),
          .plain_family = builtin::kPlainFamily,
          .stand_ins = {{QStringLiteral("Small Fonts"), builtin::kPlainFamily},
                        {QStringLiteral("Arial"), builtin::kPlainFamily},
                        {QStringLiteral("CasablancaAntique"), builtin::kAntiqueFamily}}};
}

}  // namespace orv
