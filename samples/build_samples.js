// Packs the sample designs into examples, the examples into a barrel, and the hierarchy among them into a schematic
// bundle; lists what is in one example and unpacks it again.
//
//     hollerwick-host run samples/build_samples.js SAMPLES OUT
//
// SAMPLES is the directory of this script. OUT exists and holds none of the files that are made.

if (args.length !== 2)
    throw new Error("the directory of the samples and the directory for the bundles are needed, in this order");

const designs = args[0] + "/designs/";
const out = args[1] + "/";

// What is packed: the directory and the file that stands for the design, then the files that go with it.
const manifest = [
    {
        name: "rc_lowpass", primary: "rc_lowpass.kvsch",
        files: ["documentation.html", "data/response.csv", "plans/response.testplan"],
        title: "RC low-pass filter, 1.06 kHz",
        description: "One resistor, one capacitor: corner frequency, phase and the effect of a load.",
        keywords: ["filter", "low-pass", "passive", "first order"]
    },
    {
        name: "lc_lowpass", primary: "lc_lowpass.kvsch",
        files: ["documentation.html", "data/insertion_loss.csv", "models/inductor_with_losses.kvsch"],
        title: "Third-order Butterworth low-pass, 10 MHz",
        description: "A π network between 50 Ω terminations, with a model of an inductor with losses.",
        manufacturer: "Kelvaris",
        keywords: ["filter", "low-pass", "passive", "Butterworth", "RF"]
    },
    {
        name: "input_filter", primary: "input_filter.kvsch",
        files: ["documentation.html", "plans/stability.testplan", "variants/undamped.kvsch"],
        title: "Damped input filter for a 10 W converter",
        description: "Why a filter before a switching converter needs damping, and how much.",
        manufacturer: "Monolithic Power Systems",
        keywords: ["filter", "EMI", "damping", "power supply"]
    },
    {
        name: "buck_converter", primary: "buck_converter.kvsch",
        files: ["documentation.html", "data/load step 50 % to 100 %.csv", "plans/ripple.testplan",
                "scripts/load_sweep.kvscr"],
        title: "Buck converter 12 V to 3.3 V, 2 A",
        description: "Step-down converter at 500 kHz: duty cycle, inductor, output ripple.",
        manufacturer: "Monolithic Power Systems",
        keywords: ["converter", "buck", "step-down", "power supply"]
    },
    {
        name: "boost_converter", primary: "boost_converter.kvsch",
        files: ["documentation.html", "data/duty_cycle.csv", "scripts/start_up.kvscr"],
        title: "Boost converter 5 V to 12 V, 0.5 A",
        description: "Step-up converter at 600 kHz, with the zero in the right half plane.",
        manufacturer: "Microchip Technology",
        keywords: ["converter", "boost", "step-up", "power supply"]
    },
    {
        name: "ldo_regulator", primary: "ldo_regulator.kvsch",
        files: ["documentation.html", "plans/regulation.testplan", "scripts/dropout.kvscr"],
        title: "Low-dropout regulator 3.3 V, 300 mA",
        description: "Linear regulator with a P-channel transistor: divider, heat, stability of the loop.",
        manufacturer: "Microchip Technology",
        keywords: ["regulator", "LDO", "linear", "power supply"]
    },
    {
        name: "sallen_key_lowpass", primary: "sallen_key_lowpass.kvsch",
        files: ["documentation.html", "data/response.csv", "scripts/tolerance.kvscr"],
        title: "Sallen-Key low-pass, 10 kHz, Butterworth",
        description: "Second-order active filter and what the tolerances of its parts do.",
        manufacturer: "Analog Devices",
        keywords: ["filter", "low-pass", "active", "op-amp", "Butterworth"]
    },
    {
        name: "bridge_amplifier", primary: "bridge_amplifier.kvsch",
        files: ["documentation.html", "data/strain.csv", "plans/offset and gain.testplan"],
        title: "Bridge amplifier with three op-amps, gain 101",
        description: "Instrumentation amplifier for a strain gauge of 350 Ω.",
        manufacturer: "Analog Devices",
        keywords: ["amplifier", "instrumentation", "op-amp", "sensor"]
    },
    {
        name: "photodiode_amplifier", primary: "photodiode_amplifier.kvsch",
        files: ["documentation.html", "models/photodiode.va", "plans/bandwidth.testplan"],
        title: "Transimpedance amplifier for a photodiode, 100 kΩ",
        description: "Gain, bandwidth and stability of a photodiode amplifier; a Verilog-A model of the diode.",
        manufacturer: "Renesas",
        keywords: ["amplifier", "transimpedance", "op-amp", "sensor", "Verilog-A"]
    },
    {
        name: "wien_oscillator", primary: "wien_oscillator.kvsch",
        files: ["documentation.html", "data/bridge.csv", "scripts/settle.kvscr"],
        title: "Wien bridge oscillator, 1 kHz",
        description: "Sine wave oscillator whose amplitude two diodes hold.",
        manufacturer: "STMicroelectronics",
        keywords: ["oscillator", "sine", "op-amp", "audio"]
    },
    {
        name: "precision_rectifier", primary: "precision_rectifier.kvsch",
        files: ["documentation.html", "data/transfer.csv", "plans/symmetry.testplan"],
        title: "Precision full-wave rectifier",
        description: "Absolute value without the drop of a diode.",
        manufacturer: "STMicroelectronics",
        keywords: ["rectifier", "op-amp", "measurement"]
    },
    {
        name: "verilog_a_diode", primary: "diode_bench.kvsch",
        files: ["documentation.html", "data/forward.csv", "models/junction_diode.va", "scripts/compare.kvscr"],
        title: "A junction diode in Verilog-A",
        description: "Current, inner node and charge: the pieces of a device model, with a test bench.",
        manufacturer: "Brontel",
        keywords: ["Verilog-A", "model", "diode"]
    },
    {
        name: "active_crossover", primary: "active_crossover.kvsch",
        files: ["documentation.html", "data/response.csv", "parts/opamp.kvsch", "plans/sum.testplan",
                "stages/highpass_stage.kvsch", "stages/lowpass_stage.kvsch"],
        title: "Active crossover 2 kHz, fourth order",
        description: "A hierarchy of schematics: each filter stage is used twice, their op-amp four times.",
        manufacturer: "Kelvaris",
        keywords: ["filter", "crossover", "audio", "op-amp", "hierarchy"]
    }
];

// The schematics below the root of the crossover. Behind the path stands the instance, then those above it.
const crossover = designs + "active_crossover/";
const root = crossover + "active_crossover.kvsch";
const instances = [
    crossover + "stages/lowpass_stage.kvsch;LOW1",
    crossover + "stages/lowpass_stage.kvsch;LOW2",
    crossover + "stages/highpass_stage.kvsch;HIGH1",
    crossover + "stages/highpass_stage.kvsch;HIGH2",
    crossover + "parts/opamp.kvsch;U1.LOW1",
    crossover + "parts/opamp.kvsch;U1.LOW2",
    crossover + "parts/opamp.kvsch;U1.HIGH1",
    crossover + "parts/opamp.kvsch;U1.HIGH2"
];

function expectOk(results, what) {
    if (results[0] !== "OK")
        throw new Error(what + ": " + (results[0] || "no answer"));
}

function buildExample(design) {
    const folder = designs + design.name + "/";
    const files = [design.primary].concat(design.files).map(file => folder + file);
    const bundle = out + design.name + ".kvbdl.zip";
    expectOk(_create_example(files, bundle, design.title, design.description, design.manufacturer || "",
                             design.keywords), bundle);
    print("example   " + _filename(bundle)[0] + ": " + design.title + ", " + files.length + " files");
    return bundle;
}

function buildBarrel(examples) {
    const barrel = out + "samples.kvexs";
    expectOk(_create_examples(examples, barrel), barrel);
    print("barrel    " + _filename(barrel)[0] + ": " + examples.length + " examples");
}

function buildSchematicBundle() {
    const bundle = out + "active_crossover.schematics.zip";
    const id = _schematic_bundle_create()[0];
    const parts = {};
    parts[root] = _schematic_bundle_set_root(root, id)[0];
    // parents come before their children
    for (const pair of _schematic_bundle_helper_identify_descedants(root, instances)) {
        const [child, parent] = pair.split(";");
        parts[child] = _schematic_bundle_add_descendant(child, parent, parts[parent], id)[0];
    }
    expectOk(_schematic_bundle_write(bundle, id), bundle);
    expectOk(_schematic_bundle_close(id), bundle);
    print("hierarchy " + _filename(bundle)[0] + ": " + instances.length + " instances in " +
          Object.keys(parts).length + " parts");
    for (const schematic in parts)
        print("          " + parts[schematic]);
}

function listTargets(bundle) {
    const content = "http://schemas.kelvaris.example/package/2025/relationships/content-bundle/content";
    print("targets   " + _filename(bundle)[0] + ":");
    for (const target of _content_bundle_targets(content, bundle))
        print("          " + target);
}

function unpack(bundle, directory) {
    expectOk(_unpack_content_bundle(bundle, directory), bundle);
    print("unpacked  " + _filename(bundle)[0] + " into " + directory);
}

const examples = manifest.map(buildExample);
buildBarrel(examples);
buildSchematicBundle();
const shown = out + "buck_converter.kvbdl.zip";
listTargets(shown);
unpack(shown, out + "unpacked/buck_converter");
