import java.io.InputStream;
import java.util.TreeSet;
import org.apache.poi.openxml4j.opc.OPCPackage;
import org.apache.poi.openxml4j.opc.PackageAccess;
import org.apache.poi.openxml4j.opc.PackagePart;

/** Prints what Apache POI finds in packages: parts with their media types and sizes, relationships, the title. */
public class ReadPackage {
    public static void main(String[] files) throws Exception {
        for (String file : files) {
            try (OPCPackage opened = OPCPackage.open(file, PackageAccess.READ)) {
                System.out.println("title " + opened.getPackageProperties().getTitleProperty().orElse(""));
                System.out.println("relationships " + opened.getRelationships().size());
                TreeSet<String> parts = new TreeSet<>();
                for (PackagePart part : opened.getParts()) {
                    if (part.isRelationshipPart())
                        continue;
                    if (part.getPartName().getName().equals("/docProps/core.xml"))
                        continue; // POI gives its properties, and not its bytes
                    try (InputStream bytes = part.getInputStream()) {
                        parts.add("part " + part.getPartName().getName() + " " + part.getContentType() + " " + bytes.readAllBytes().length);
                    }
                }
                parts.forEach(System.out::println);
            }
        }
    }
}
