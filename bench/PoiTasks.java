import java.io.InputStream;
import java.io.OutputStream;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.Paths;
import java.util.List;
import java.util.stream.Collectors;
import java.util.stream.Stream;

import org.apache.poi.openxml4j.opc.OPCPackage;
import org.apache.poi.openxml4j.opc.PackageAccess;
import org.apache.poi.openxml4j.opc.PackagePart;
import org.apache.poi.openxml4j.opc.PackagePartName;
import org.apache.poi.openxml4j.opc.PackageProperties;
import org.apache.poi.openxml4j.opc.PackageRelationship;
import org.apache.poi.openxml4j.opc.PackagingURIHelper;
import org.apache.poi.openxml4j.opc.TargetMode;
import org.apache.poi.openxml4j.util.ZipSecureFile;

/** The tasks of the benchmarks with Apache POI's packages. */
final class PoiTasks {
    private static final String RELATIONSHIPS = "http://schemas.kelvaris.example/package/2025/relationships/";

    /** Not by OPCPackage.getPart(PackageRelationship), which gives another part of the same type. */
    private static PackagePart target(OPCPackage source, PackageRelationship relationship) throws Exception {
        return source.getPart(PackagingURIHelper.createPartName(relationship.getTargetURI()));
    }

    private static void pack(Path directory, String output) throws Exception {
        List<Path> files;
        try (Stream<Path> all = Files.walk(directory)) {
            files = all.filter(Files::isRegularFile).sorted().collect(Collectors.toList());
        }
        try (OPCPackage bundle = OPCPackage.create(output)) {
            for (Path file : files) {
                String name = "/content/" + directory.relativize(file).toString();
                PackagePartName partName = PackagingURIHelper.createPartName(name);
                PackagePart part = bundle.createPart(partName, "application/octet-stream");
                try (OutputStream stream = part.getOutputStream()) {
                    Files.copy(file, stream);
                }
                bundle.addRelationship(partName, TargetMode.INTERNAL, RELATIONSHIPS + "content-bundle/content");
            }
        }
    }

    private static void unpack(String input, Path directory) throws Exception {
        try (OPCPackage bundle = OPCPackage.open(input, PackageAccess.READ)) {
            for (PackageRelationship each : bundle.getRelationshipsByType(RELATIONSHIPS + "content-bundle/content")) {
                PackagePart part = target(bundle, each);
                Path target = directory.resolve(part.getPartName().getName().substring(1));
                Files.createDirectories(target.getParent());
                try (InputStream stream = part.getInputStream()) {
                    Files.copy(stream, target);
                }
            }
        }
    }

    private static void list(String input) throws Exception {
        int count = 0;
        long characters = 0;
        try (OPCPackage barrel = OPCPackage.open(input, PackageAccess.READ)) {
            for (PackageRelationship each : barrel.getRelationshipsByType(RELATIONSHIPS + "barrel-of-examples/example")) {
                try (OPCPackage example = OPCPackage.open(target(barrel, each).getInputStream())) {
                    PackageProperties texts = example.getPackageProperties();
                    characters += texts.getTitleProperty().orElse("").length();
                    characters += texts.getDescriptionProperty().orElse("").length();
                    characters += texts.getKeywordsProperty().orElse("").length();
                    PackageRelationship properties =
                        example.getRelationshipsByType(RELATIONSHIPS + "bundle/properties").getRelationship(0);
                    characters += new String(target(example, properties).getInputStream().readAllBytes(), "UTF-8").length();
                    ++count;
                    example.revert();
                }
            }
        }
        System.out.println(count + " " + (characters > 0));
    }

    private static void open(String input) throws Exception {
        OPCPackage.open(input, PackageAccess.READ).revert();
    }

    public static void main(String[] arguments) throws Exception {
        ZipSecureFile.setMinInflateRatio(0);
        ZipSecureFile.setMaxEntrySize(0xFFFFFFFFL);
        long start = System.nanoTime();
        switch (arguments[0]) {
        case "pack":
            pack(Paths.get(arguments[1]), arguments[2]);
            break;
        case "unpack":
            unpack(arguments[1], Paths.get(arguments[2]));
            break;
        case "list":
            list(arguments[1]);
            break;
        default:
            open(arguments[1]);
        }
        System.out.println("seconds " + (System.nanoTime() - start) / 1e9);
    }
}
