// The bank of stored single-cycle waves: constant data, one copy per process, made at build time.
#pragma once

namespace qor {

// One cycle each, indexed by phase; peak about 1.0, mean about 0.0.
extern const float table_sine[4096];
extern const float table_tri[4096];
extern const float table_saw[4096];
extern const float table_sqr[4096];
extern const float table_03[4096];
extern const float table_04[4096];
extern const float table_05[4096];
extern const float table_06[4096];
extern const float table_07[4096];
extern const float table_08[4096];
extern const float table_09[4096];
extern const float table_10[4096];
extern const float table_11[4096];
extern const float table_12[4096];
extern const float table_13[4096];
extern const float table_14[4096];
extern const float table_15[4096];
extern const float table_16[4096];
extern const float table_17[4096];
extern const float table_18[4096];
extern const float table_19[4096];
extern const float table_20[4096];
extern const float table_21[4096];
extern const float table_22[4096];
extern const float table_23[4096];
extern const float table_24[4096];
extern const float table_25[4096];
extern const float table_26[4096];
extern const float table_27[4096];
extern const float table_28[4096];
extern const float table_29[4096];
extern const float table_30[4096];
extern const float table_31[4096];
extern const float table_32[4096];
extern const float table_33[4096];
extern const float table_34[4096];
extern const float table_35[4096];
extern const float table_36[4096];
extern const float table_37[4096];
extern const float table_38[4096];
extern const float table_39[4096];
extern const float table_40[4096];
extern const float table_41[4096];
extern const float table_42[4096];
extern const float table_43[4096];
extern const float table_44[4096];
extern const float table_45[4096];
extern const float table_46[4096];
extern const float table_47[4096];
extern const float table_48[4096];
extern const float table_49[4096];
extern const float table_50[4096];
extern const float table_51[4096];
extern const float table_52[4096];
extern const float table_53[4096];
extern const float table_54[4096];
extern const float table_55[4096];
extern const float table_56[4096];
extern const float table_57[4096];
extern const float table_58[4096];
extern const float table_59[4096];
extern const float table_60[4096];
extern const float table_61[4096];
extern const float table_62[4096];
extern const float table_63[4096];
extern const float table_64[4096];

/// All of them, in order.
extern const float* const kStoredWaves[66];

} // namespace qor
