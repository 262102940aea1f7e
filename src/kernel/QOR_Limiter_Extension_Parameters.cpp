#include "kernel/QOR_Limiter_Extension_Parameters.h"

#include "kernel/ParameterTable.h"

namespace qor {

namespace {

/// The platform's text formatter for the format "%" and one argument. The format has no conversion, so the
/// argument never shows, and the lone sign comes out as it is.
std::string formatLonePercent(const AUValue* /*pointer*/) {
    return "%";
}
std::string formatLonePercent(AUValue /*value*/) {
    return "%";
}

} // namespace

QOR_Limiter_Extension_Parameters::QOR_Limiter_Extension_Parameters(
    const Ref<QOR_Limiter_ExtensionDSPKernelAdapter>& kernelAdapter) {
    create();
    for (const Ref<AUParameter>& parameter : parameterTree_->allParameters()) {
        kernelAdapter->setParameter(*parameter, parameter->value());
    }
    parameterTree_->implementorValueObserver = [kernelAdapter](AUParameter& parameter, AUValue value) {
        kernelAdapter->setParameter(parameter, value);
    };
    parameterTree_->implementorValueProvider = [kernelAdapter](AUParameter& parameter) {
        return kernelAdapter->valueForParameter(parameter);
    };
    parameterTree_->implementorStringFromValueCallback = [](AUParameter& parameter, const AUValue* value) {
        [[maybe_unused]] const AUParameterAddress address = parameter.address();
        return value != nullptr ? formatLonePercent(value) : formatLonePercent(parameter.value());
    };
}

void QOR_Limiter_Extension_Parameters::create() {
    std::vector<Ref<AUParameterNode>> parameters;
    for (const ParameterRow& row : kParameterTable) {
        const Ref<AUParameter> parameter = AUParameterTree::createParameter(
            row.identifier, row.displayName, row.address, row.minimum, row.maximum, row.unit, std::nullopt,
            kAudioUnitParameterFlag_IsReadable | kAudioUnitParameterFlag_IsWritable, std::nullopt,
            std::nullopt);
        parameter->setValue(row.defaultValue);
        parameters.push_back(parameter);
    }
    groups_.push_back(AUParameterTree::createGroup("kGlobalParameters", "QOR Limiter Global", parameters));
    parameterTree_ = AUParameterTree::createTree({groups_.begin(), groups_.end()});
}

} // namespace qor
